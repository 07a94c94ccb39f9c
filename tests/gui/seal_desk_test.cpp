// The seal window as a clerk drives it with the mouse and the keyboard, started the
// way the program starts, on an office whose settings file has its section: the
// list's ticks by mouse, the Enter keys, the menus, the layout on office screens,
// and a missing program.

#include "desk.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/vb_error.h"

#include <QDialogButtonBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>

using desk::child;
using desk::DeskPlatform;
using desk::Office;
using seal::frmPrintシール;

namespace {

class SealDesk : public testing::Test {
protected:
    SealDesk() { desk::application(); }
    Office office;
    DeskPlatform desk;
};

}  // namespace

// --- the list under the mouse ----------------------------------------------------

struct TickCase {
    const char* name;
    bool checkOrder;
};

class MouseTicks : public SealDesk, public testing::WithParamInterface<TickCase> {};

TEST_P(MouseTicks, AClickOnATickBoxTicksTheRowAndTheWindowFollows)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* view = child<QTableView>(w, QStringLiteral("fpSpread02"));
        auto* order = child<QCheckBox>(w, QStringLiteral("chkCheck"));
        ASSERT_TRUE(view && order);
        ASSERT_GE(view->model()->rowCount(), 3);
        if (GetParam().checkOrder != order->isChecked())
            QTest::mouseClick(order, Qt::LeftButton, {}, QPoint(8, order->height() / 2));
        ASSERT_EQ(f.chkCheck.value() != 0, GetParam().checkOrder);

        for (int row : {2, 0, 2}) {
            const int gridRow = view->model()->headerData(row, Qt::Vertical, Qt::DisplayRole).toInt();
            const int before = f.fpSpread02.value(1, gridRow);
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, desk::tickBoxCentre(view, row));
            EXPECT_NE(f.fpSpread02.value(1, gridRow), before) << "row " << row;
            EXPECT_EQ(f.fpSpread02.ActiveRow(), gridRow);
        }
        // Row 2 ticked and unticked again, row 0 ticked: one line in the print order.
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
        if (GetParam().checkOrder) {
            EXPECT_EQ(f.lstCheck.ListCount(), 1);
        }
        // A double click on a name and a click beside the tick box reach the grid too.
        desk::doubleClick(view->viewport(), desk::cellCentre(view, 1, 1));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, desk::cellCentre(view, 1, 2));
        EXPECT_EQ(f.fpSpread02.ActiveRow(), view->model()->headerData(1, Qt::Vertical, Qt::DisplayRole).toInt());
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
    });
}

INSTANTIATE_TEST_SUITE_P(Modes, MouseTicks,
                         testing::Values(TickCase{"PlainOrder", false}, TickCase{"CheckOrder", true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SealDesk, AClickOnARowThatASearchJustRemovedActsOnNoStaleRow)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* view = child<QTableView>(w, QStringLiteral("fpSpread02"));
        ASSERT_NE(view, nullptr);
        const QPoint lastRow = desk::tickBoxCentre(view, view->model()->rowCount() - 1);
        // The press lands on the last row; a search removes it before the button
        // comes up, and the double click lands where no row is left.
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, lastRow);
        desk.dispatch([&] {
            f.txtName.setText(QStringLiteral("山田"));
            f.btnDisp.click();
        });
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, lastRow);
        desk::doubleClick(view->viewport(), lastRow);
        EXPECT_LT(view->model()->rowCount(), 6);
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
    });
}

TEST_F(SealDesk, ClicksOnThePrintOrderListSelectAndDoubleClicksRemove)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* view = child<QTableView>(w, QStringLiteral("fpSpread02"));
        auto* list = child<QListWidget>(w, QStringLiteral("lstCheck"));
        ASSERT_TRUE(view && list);
        auto* order = child<QCheckBox>(w, QStringLiteral("chkCheck"));
        QTest::mouseClick(order, Qt::LeftButton, {}, QPoint(8, order->height() / 2));
        for (int row : {0, 1, 2})
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, desk::tickBoxCentre(view, row));
        ASSERT_EQ(list->count(), 3);
        const QString second = f.lstCheck.List(1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
        EXPECT_EQ(f.lstCheck.ListIndex(), 1);
        desk::doubleClick(list->viewport(), list->visualItemRect(list->item(1)).center());
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
        // The double clicked line leaves the order and its row is no longer ticked.
        EXPECT_EQ(f.lstCheck.ListCount(), 2);
        for (int i = 0; i < f.lstCheck.ListCount(); ++i) EXPECT_NE(f.lstCheck.List(i), second);
    });
}

// --- the keyboard --------------------------------------------------------------------

TEST_F(SealDesk, TheFirstEnterAfterTheNameSearchTicksTheFirstRowAndMovesOn)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* name = child<QLineEdit>(w, QStringLiteral("txtName"));
        auto* view = child<QTableView>(w, QStringLiteral("fpSpread02"));
        ASSERT_TRUE(name && view);
        name->setFocus();
        QTest::keyClicks(name, QStringLiteral("1"));
        QTest::keyClick(name, Qt::Key_Return);
        ASSERT_TRUE(view->hasFocus());
        ASSERT_EQ(f.ActiveControl(), &f.fpSpread02);
        const int first = f.fpSpread02.ActiveRow();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_NE(f.fpSpread02.value(1, first), 0);
        EXPECT_GT(f.fpSpread02.ActiveRow(), first);
        EXPECT_TRUE(view->hasFocus());
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
    });
}

TEST_F(SealDesk, KeysPressedWhileABoxIsOpenDoNotReachTheWindowBehindIt)
{
    desk.realBoxes = true;
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* print = child<QPushButton>(w, QStringLiteral("btnJisseki(0)"));
        ASSERT_TRUE(print);
        bool boxSeen = false;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            boxSeen = box != nullptr;
            // The clerk presses the print key and clicks the window behind the box.
            QTest::keyClick(w.windowHandle(), Qt::Key_F5);
            QTest::mouseClick(w.windowHandle(), Qt::LeftButton, {}, print->mapTo(&w, print->rect().center()));
            QApplication::processEvents();
            if (box) QTest::keyClick(box, Qt::Key_Return);
        });
        QTest::mouseClick(print, Qt::LeftButton);  // nothing ticked: the box says so
        EXPECT_TRUE(boxSeen);
        EXPECT_EQ(desk.boxes.size(), 1) << desk.boxes.join(u'\n').toStdString();
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
    });
}

// --- captions and menus ----------------------------------------------------------------

TEST_F(SealDesk, EveryBoundWidgetShowsItsControlsCaptionAndState)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
        // Every control has its widget or its menu item.
        QStringList unbound;
        for (controls::Control* c : f.all())
            if (!w.findChild<QWidget*>(c->name()) && !w.findChild<QAction*>(c->name())) unbound << c->name();
        EXPECT_EQ(unbound, QStringList());
    });
}

TEST_F(SealDesk, TheMenusStandAsTheScreenNamesThem)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* bar = w.findChild<QMenuBar*>();
        ASSERT_NE(bar, nullptr);
        QStringList titles;
        for (QAction* a : bar->actions()) titles << a->text();
        EXPECT_EQ(titles, (QStringList{f.mnFunc.caption(), f.mnSettei.caption(), f.mnHelp.caption()}));
        EXPECT_EQ(titles.at(1), QStringLiteral("設定(&E)"));

        QMenu* settings = bar->actions().at(1)->menu();
        ASSERT_NE(settings, nullptr);
        struct Sub {
            QString title;
            std::vector<controls::MenuItem*> items;
        };
        const std::vector<Sub> subs{{QStringLiteral("CK(印刷対象チェック)"), {&f.mnCKOnOff[0], &f.mnCKOnOff[1]}},
                                    {QStringLiteral("種類：保険者データ"), {&f.mnHokenjaDisp[0], &f.mnHokenjaDisp[1]}},
                                    {QStringLiteral("チェック順で印刷"), {&f.mnCheckOn}},
                                    {QStringLiteral("Enterキー"), {&f.mnEnterOn}}};
        ASSERT_EQ(settings->actions().size(), static_cast<qsizetype>(subs.size()));
        for (size_t i = 0; i < subs.size(); ++i) {
            QAction* title = settings->actions().at(static_cast<qsizetype>(i));
            EXPECT_EQ(title->text(), subs[i].title);
            ASSERT_NE(title->menu(), nullptr) << subs[i].title.toStdString();
            const QList<QAction*> items = title->menu()->actions();
            ASSERT_EQ(items.size(), static_cast<qsizetype>(subs[i].items.size()));
            for (size_t k = 0; k < subs[i].items.size(); ++k) {
                EXPECT_EQ(items.at(static_cast<qsizetype>(k))->text(), subs[i].items[k]->caption());
                EXPECT_TRUE(items.at(static_cast<qsizetype>(k))->isCheckable());
            }
        }
        // The command keys stand on their items.
        QMenu* func = bar->actions().at(0)->menu();
        QStringList keys;
        for (QAction* a : func->actions())
            if (!a->isSeparator()) keys << a->text() + u' ' + a->shortcut().toString();
        EXPECT_EQ(keys, (QStringList{QStringLiteral("同意更新設定 F3"), QStringLiteral("抽出 F4"),
                                     QStringLiteral("印刷 F5"), QStringLiteral("プレビュー F9"),
                                     QStringLiteral("メインメニュー Shift+F12"), QStringLiteral("戻る F12")}));
        // A setting chosen from its submenu marks it and the model follows.
        settings->actions().at(0)->menu()->actions().at(1)->trigger();
        EXPECT_TRUE(f.mnCKOnOff[1].checked());
        settings->actions().at(2)->menu()->actions().at(0)->trigger();
        EXPECT_TRUE(f.mnCheckOn.checked());
        EXPECT_EQ(desk::mirrorFaults(w, f), QStringList());
    });
}

// --- layout on office screens --------------------------------------------------------

struct Mode {
    const char* name;
    short kind;
    int printMethod;
};

class Layout : public SealDesk, public testing::WithParamInterface<Mode> {};

// Inside the window's visible area, and not scrolled away.
bool inSight(QWidget& window, QWidget* w)
{
    const QRect r(w->mapTo(&window, QPoint(0, 0)), w->size());
    if (!window.rect().contains(r)) return false;
    for (QWidget* p = w->parentWidget(); p && p != &window; p = p->parentWidget()) {
        const QRect inParent(w->mapTo(p, QPoint(0, 0)), w->size());
        if (!p->rect().contains(inParent)) return false;
    }
    return true;
}

TEST_P(Layout, AtOfficeScreenSizesTheCommandRowIsInSightAndAt1280x800EverythingIs)
{
    const Mode& m = GetParam();
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget& w) {
        auto* kind = child<QRadioButton>(w, QStringLiteral("optMst(%1)").arg(m.kind));
        auto* method = child<QRadioButton>(w, QStringLiteral("opPMode(%1)").arg(m.printMethod));
        ASSERT_TRUE(kind && method);
        if (!kind->isHidden()) QTest::mouseClick(kind, Qt::LeftButton);
        if (!method->isHidden()) QTest::mouseClick(method, Qt::LeftButton);
        ASSERT_TRUE(f.lblEnter.visible());  // the Enter-add hint line is shown
        auto* commandRow = child<QWidget>(w, QStringLiteral("commandRow"));
        ASSERT_NE(commandRow, nullptr);
        // A maximised window under a title bar and a task bar.
        for (QSize size : {QSize(1280, 800 - 70), QSize(1024, 768 - 70), QSize(800, 600 - 70)}) {
            w.resize(size);
            QApplication::processEvents();
            EXPECT_LE(w.width(), size.width());
            EXPECT_LE(w.height(), size.height());
            for (QPushButton* b : commandRow->findChildren<QPushButton*>())
                if (!b->isHidden()) {
                    EXPECT_TRUE(inSight(w, b)) << b->objectName().toStdString() << " at " << size.width();
                }
            if (size.width() != 1280) continue;
            auto* scroll = w.findChild<QScrollArea*>();
            ASSERT_NE(scroll, nullptr);
            EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0)
                << "needs " << scroll->widget()->minimumSizeHint().height();
            EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0)
                << "needs " << scroll->widget()->minimumSizeHint().width();
            for (controls::Control* c : f.all()) {
                QWidget* bound = w.findChild<QWidget*>(c->name());
                if (bound && bound->isVisible()) {
                    EXPECT_TRUE(inSight(w, bound)) << c->name().toStdString();
                }
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(KindsAndMethods, Layout,
                         testing::Values(Mode{"PatientsOnLabels", 0, 0}, Mode{"PatientsOnEnvelopes", 0, 1},
                                         Mode{"DoctorsOnLabels", 1, 0}, Mode{"InsurersOnEnvelopes", 2, 1},
                                         Mode{"CareManagersOnEnvelopes", 4, 1}, Mode{"OwnOfficesOnLabels", 7, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SealDesk, TheFootnoteBoxShowsTheLongestDefaultWhole)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール&, QWidget& w) {
        w.resize(1280, 730);
        QApplication::processEvents();
        auto* foot = child<QComboBox>(w, QStringLiteral("cboKyakutyuList"));
        ASSERT_TRUE(foot && foot->lineEdit());
        const QString longest = QStringLiteral("療養費支給申請書在中");
        EXPECT_GE(foot->lineEdit()->width(), foot->lineEdit()->fontMetrics().horizontalAdvance(longest));
    });
}

// --- a program that is not there -------------------------------------------------------

class MissingPrograms : public SealDesk {
protected:
    MissingPrograms() : path(qgetenv("PATH"))
    {
        qputenv("PATH", emptyFolder.path().toLocal8Bit());
        desk.realStarts = true;
    }
    ~MissingPrograms() override { qputenv("PATH", path); }

    QTemporaryDir emptyFolder;
    QByteArray path;
    const QString fault = app::unhandledFaultText(base::VbError::fileNotFound());
};

TEST_F(MissingPrograms, APreviewWithoutTheEngineSaysSoInsteadOfDoingNothing)
{
    desk::runSealWindow(desk, office, [&](frmPrintシール&, QWidget& w) {
        auto* view = child<QTableView>(w, QStringLiteral("fpSpread02"));
        ASSERT_NE(view, nullptr);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, desk::tickBoxCentre(view, 0));
        desk.boxes.clear();
        QTest::mouseClick(child<QPushButton>(w, QStringLiteral("btnJisseki(1)")), Qt::LeftButton);
        EXPECT_EQ(desk.boxes, QStringList{fault});
        EXPECT_FALSE(desk.starts.isEmpty());
        desk.boxes.clear();
    });
    // Leaving hands over to the menu program, which is not there either.
    EXPECT_EQ(desk.boxes, QStringList{fault});
    EXPECT_TRUE(desk.starts.last().contains(QStringLiteral("Main.exe"))) << desk.starts.last().toStdString();
}

// --- Qt's own texts --------------------------------------------------------------------

TEST(QtTexts, TheStandardButtonsOfQtsDialogsSpeakJapanese)
{
    desk::application();
    QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Save);
    EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text(), QStringLiteral("キャンセル"));
    EXPECT_EQ(box.button(QDialogButtonBox::Save)->text(), QStringLiteral("保存"));
}
