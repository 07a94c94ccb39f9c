// The report engine's joiner: turns a joined print script into one form for the viewer.
#include "engine/viewer_app.h"

int main(int argc, char** argv) { return engine::runJoiner(argc, argv); }
