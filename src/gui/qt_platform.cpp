#include "gui/qt_platform.h"

#include "app/globals.h"
#include "app/messages.h"
#include "app/program_start.h"
#include "controls/screen.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QSysInfo>
#include <QUrl>

namespace gui {

BoxSpec boxSpecForStyle(int style)
{
    BoxSpec look{QMessageBox::NoIcon, (style & 7) == controls::BoxStyle::OkCancel,
                 (style & 0x300) == controls::BoxStyle::DefaultButton2};
    switch (style & 0x70) {
    case controls::BoxStyle::Critical:
        look.icon = QMessageBox::Critical;
        break;
    case controls::BoxStyle::Question:
        look.icon = QMessageBox::Question;
        break;
    case controls::BoxStyle::Warning:
        look.icon = QMessageBox::Warning;
        break;
    case controls::BoxStyle::Information:
        look.icon = QMessageBox::Information;
        break;
    default:
        break;
    }
    return look;
}

QtPlatform::QtPlatform(ViewFactory views) : views_(std::move(views)) {}

QtPlatform::~QtPlatform() = default;

int QtPlatform::msgBox(const QString& text, int style, const QString& title)
{
    const BoxSpec look = boxSpecForStyle(style);
    QMessageBox box(static_cast<QMessageBox::Icon>(look.icon), title.isEmpty() ? app::kSealTitle : title,
                    QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n'),
                    QMessageBox::NoButton, QApplication::activeWindow());
    QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    QPushButton* cancel =
        look.okCancel ? box.addButton(QStringLiteral("キャンセル"), QMessageBox::RejectRole) : nullptr;
    box.setDefaultButton(look.cancelIsDefault && cancel ? cancel : ok);
    box.setEscapeButton(static_cast<QAbstractButton*>(cancel ? cancel : ok));
    // The wait cursor must not stand over a question.
    const bool restore = hourglass_;
    if (restore) QApplication::restoreOverrideCursor();
    box.exec();
    if (restore) QApplication::setOverrideCursor(Qt::WaitCursor);
    return cancel && box.clickedButton() == static_cast<QAbstractButton*>(cancel) ? controls::BoxAnswer::Cancel
                                                                                  : controls::BoxAnswer::Ok;
}

void QtPlatform::setPointer(controls::Pointer pointer)
{
    const bool want = pointer == controls::Pointer::Hourglass;
    if (want == hourglass_) return;
    hourglass_ = want;
    if (want)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool QtPlatform::startProgram(const QString& commandLine, int)
{
    if (app::startDetached(commandLine, app::gsAppPath)) return true;
    // The screens keep a failed start to themselves (the report driver only notes it);
    // on the desktop the operator would be left with a button that does nothing, so the
    // box the system shows for a program it cannot find stands here.
    msgBox(app::unhandledFaultText(base::VbError::fileNotFound()), controls::BoxStyle::Critical, QString());
    return false;
}

void QtPlatform::openUrl(const QString& url) { QDesktopServices::openUrl(QUrl(url)); }

void QtPlatform::beep() { QApplication::beep(); }

void QtPlatform::sendKey(const QString& key)
{
    if (key != QLatin1String("{TAB}")) return;
    if (QWidget* w = QApplication::focusWidget()) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(w, &press);
    }
}

void QtPlatform::doEvents() { QApplication::processEvents(QEventLoop::AllEvents, 50); }

QDate QtPlatform::today() { return QDate::currentDate(); }

QDateTime QtPlatform::now() { return QDateTime::currentDateTime(); }

QString QtPlatform::machineName() { return QSysInfo::machineHostName(); }

void QtPlatform::showModal(controls::Screen& screen)
{
    std::unique_ptr<QWidget> view = views_ ? views_(screen) : nullptr;
    screen.load();
    if (!view) {
        if (!screen.isUnloaded()) screen.activate();
        if (!screen.isUnloaded()) screen.closeByUser();
        return;
    }
    if (screen.isUnloaded()) return;
    QEventLoop loop;
    screen.Unloading = [&](controls::Screen&) {
        view->hide();
        loop.quit();
    };
    view->setWindowModality(Qt::ApplicationModal);
    view->show();
    view->activateWindow();
    if (!screen.isUnloaded()) screen.activate();
    if (!screen.isUnloaded()) {
        loops_.push_back(&loop);
        loop.exec();
        loops_.pop_back();
    }
    screen.Unloading = nullptr;
    if (pendingEnd_) {
        const controls::ProcessEnd end = *pendingEnd_;
        if (loops_.empty()) pendingEnd_.reset();
        throw end;
    }
}

void QtPlatform::dispatch(const std::function<void()>& act)
{
    if (pendingEnd_) return;
    try {
        act();
    } catch (const controls::ProcessEnd& end) {
        pendingEnd_ = end;
        leaveAllLoops();
    } catch (const base::VbError& fault) {
        msgBox(app::unhandledFaultText(fault), controls::BoxStyle::Critical, QString());
        pendingEnd_ = controls::ProcessEnd{1};
        leaveAllLoops();
    }
}

void QtPlatform::leaveAllLoops()
{
    for (QEventLoop* loop : loops_) loop->quit();
}

void QtPlatform::showModeless(controls::Screen& screen)
{
    std::unique_ptr<QWidget> view = views_ ? views_(screen) : nullptr;
    screen.load();
    if (view) {
        view->show();
        modeless_.push_back(std::move(view));
    }
    if (!screen.isUnloaded()) screen.activate();
}

void QtPlatform::endProcess(int exitCode) { throw controls::ProcessEnd{exitCode}; }

}  // namespace gui
