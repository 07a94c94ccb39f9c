#include "gui/wait_windows.h"

#include "app/wait_notices.h"
#include "gui/binder.h"
#include "gui/qt_platform.h"

#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace gui {

namespace {

// twips to pixels at the usual 96 dpi: 15 twips a pixel.
int px(int twips) { return twips / 15; }

}  // namespace

WaitMsgWindow::WaitMsgWindow(QtPlatform& platform, app::frmWaitMsg& screen)
        : ScreenDialog(platform, screen), screen_(screen), binder_(std::make_unique<Binder>(platform, screen, this))
{
    // The four icons: information, warning, critical, question.
    const QStyle::StandardPixmap icons[] = {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxWarning,
                                            QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxQuestion};
    for (size_t i = 0; i < screen.imgInf.size(); ++i) {
        auto* icon = new ClickableLabel(this);
        icon->setPixmap(style()->standardIcon(icons[i]).pixmap(32, 32));
        icon->move(8, 12);
        binder_->picture(screen.imgInf[i], icon);
    }
    auto* text = new QLabel(this);
    text->setWordWrap(true);
    binder_->label(screen.laMsg, text);
    auto* ok = new QPushButton(this);
    binder_->button(screen.cmdOK, ok);
    resize(px(4800), px(1800));
}

WaitMsgWindow::~WaitMsgWindow() = default;

void WaitMsgWindow::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    platform_.dispatch([&] { screen_.resize(width() * 15, height() * 15); });
    for (QObject* o : children()) {
        auto* w = qobject_cast<QWidget*>(o);
        if (w == nullptr) continue;
        if (w->objectName() == QLatin1String("laMsg"))
            w->setGeometry(px(screen_.laMsg.left()), px(screen_.laMsg.top()), px(screen_.laMsg.width()),
                           px(screen_.laMsg.height()));
        else if (w->objectName() == QLatin1String("cmdOK"))
            w->setGeometry(px(screen_.cmdOK.left()), px(screen_.cmdOK.top()), px(screen_.cmdOK.width()),
                           px(screen_.cmdOK.height()));
    }
}

void WaitMsgWindow::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && isVisible())
        platform_.dispatch([&] { screen_.deactivate(); });
}

MsgWaitWindow::MsgWaitWindow(QtPlatform& platform, app::frmMsgWait& screen)
        : binder_(std::make_unique<Binder>(platform, screen, this))
{
    setWindowTitle(screen.caption());
    auto* v = new QVBoxLayout(this);
    auto* frame = new QGroupBox;
    binder_->frame(screen.Frame1, frame);
    auto* h = new QHBoxLayout(frame);
    auto* icon = new ClickableLabel;
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(32, 32));
    binder_->picture(screen.imgWait, icon);
    auto* text = new QLabel;
    binder_->label(screen.laMessage, text);
    h->addWidget(icon);
    h->addWidget(text, 1);
    v->addWidget(frame);
    resize(320, 110);
}

MsgWaitWindow::~MsgWaitWindow() = default;

}  // namespace gui
