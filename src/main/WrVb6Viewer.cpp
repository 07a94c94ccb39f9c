// The report engine's viewer: runs a WfdCom.dat script.
#include "engine/viewer_app.h"

int main(int argc, char** argv) { return engine::runViewer(argc, argv, "WrVb6Viewer"); }
