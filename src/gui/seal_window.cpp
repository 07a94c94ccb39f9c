#include "gui/seal_window.h"

#include "gui/binder.h"
#include "gui/grid_model.h"
#include "gui/qt_platform.h"
#include "seal/seal_job.h"
#include "seal/seal_screen.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTableView>
#include <QVBoxLayout>

namespace gui {

namespace {

// The envelope pictures: the outline of the envelope, its postal-code boxes and the
// direction of writing, drawn rather than loaded so nothing is missing at run time.
QPixmap envelopePicture(int index)
{
    const bool sideways = index == 2;
    const QSize size = index == 1 ? QSize(76, 100) : sideways ? QSize(110, 56) : QSize(50, 100);
    QPixmap pm(size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(90, 90, 90), 1.2));
    p.setBrush(QColor(250, 246, 235));
    p.drawRect(QRectF(1, 1, size.width() - 2, size.height() - 2));
    p.setPen(QPen(QColor(200, 40, 40), 1));
    p.setBrush(Qt::NoBrush);
    if (!sideways) {
        for (int i = 0; i < 7; ++i) p.drawRect(QRectF(size.width() - 6 - (7 - i) * 5.2, 4, 4.2, 6));
        p.setPen(QPen(QColor(60, 60, 60), 1.5));
        p.drawLine(QPointF(size.width() * 0.62, 16), QPointF(size.width() * 0.62, size.height() - 12));
        p.drawLine(QPointF(size.width() * 0.45, 22), QPointF(size.width() * 0.45, size.height() - 20));
    } else {
        p.setPen(QPen(QColor(60, 60, 60), 1.5));
        p.drawLine(QPointF(14, 16), QPointF(size.width() - 20, 16));
        p.drawLine(QPointF(14, 28), QPointF(size.width() - 30, 28));
        p.drawLine(QPointF(24, 42), QPointF(size.width() - 40, 42));
    }
    return pm;
}

QGroupBox* group(const QString& title, QLayout* layout)
{
    auto* box = new QGroupBox(title);
    box->setLayout(layout);
    return box;
}

}  // namespace

SealWindow::SealWindow(QtPlatform& platform, seal::frmPrintシール& screen)
        : platform_(platform), screen_(screen), binder_(std::make_unique<Binder>(platform, screen, this))
{
    setWindowTitle(QStringLiteral("シール印刷"));
    auto* central = new QWidget;
    auto* columns = new QHBoxLayout(central);

    auto* left = new QVBoxLayout;
    left->addWidget(buildKinds());
    left->addStretch(1);
    columns->addLayout(left);

    auto* middle = new QVBoxLayout;
    middle->addWidget(buildSearch());
    middle->addWidget(buildList(), 1);
    columns->addLayout(middle, 1);

    auto* right = new QVBoxLayout;
    right->addWidget(buildOrder(), 1);
    right->addWidget(buildSheet());
    columns->addLayout(right);

    // On a small screen the controls scroll; the command row stays in sight below them.
    auto* scroll = new QScrollArea;
    scroll->setWidget(central);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* outer = new QWidget;
    auto* rows = new QVBoxLayout(outer);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addWidget(scroll, 1);
    QWidget* commands = buildCommands();
    commands->setObjectName(QStringLiteral("commandRow"));
    rows->addWidget(commands);
    setCentralWidget(outer);

    auto* status = new QStatusBar;
    setStatusBar(status);
    binder_->status(screen_.Status, status);
    buildMenus();
    // Never larger than the screen: the title bar and the task bar take their share.
    const QScreen* desktop = QGuiApplication::primaryScreen();
    const QSize room = desktop ? desktop->availableGeometry().size() - QSize(16, 48) : QSize(1240, 740);
    resize(QSize(1240, 740).boundedTo(room));
}

SealWindow::~SealWindow() = default;

QWidget* SealWindow::buildKinds()
{
    auto* w = new QWidget;
    auto* v = new QGridLayout(w);
    v->setContentsMargins(0, 0, 0, 0);

    auto* kinds = new QVBoxLayout;
    for (short k : seal::kOnScreenKindOrder) {
        auto* r = new QRadioButton;
        binder_->option(screen_.optMst[static_cast<size_t>(k)], r);
        kinds->addWidget(r);
    }
    v->addWidget(group(QStringLiteral("種類"), kinds), 0, 0);

    auto* honor = new QVBoxLayout;
    for (size_t i = 0; i < screen_.optKeisho.size(); ++i) {
        auto* r = new QRadioButton;
        binder_->option(screen_.optKeisho[i], r);
        honor->addWidget(r);
    }
    auto* etc = new QLineEdit;
    binder_->text(screen_.txtEtc, etc);
    honor->addWidget(etc);
    v->addWidget(group(QStringLiteral("敬称"), honor), 0, 1);

    auto* modes = new QVBoxLayout;
    for (auto& m : screen_.opPMode) {
        auto* r = new QRadioButton;
        binder_->option(m, r);
        modes->addWidget(r);
    }
    modes->addStretch(1);
    v->addWidget(group(QStringLiteral("印刷方法"), modes), 1, 0);

    // The three address frames share one place; the model shows one at a time.
    auto* addresses = new QGridLayout;
    auto addFrame = [&](controls::Frame& frame, std::deque<controls::OptionButton>& options) {
        auto* box = new QGroupBox;
        auto* lay = new QVBoxLayout(box);
        for (auto& o : options) {
            auto* r = new QRadioButton;
            binder_->option(o, r);
            lay->addWidget(r);
        }
        binder_->frame(frame, box);
        addresses->addWidget(box, 0, 0);
    };
    addFrame(screen_.fraAdd, screen_.optAdd);
    addFrame(screen_.fraAddHokenja, screen_.optAddHokenja);
    addFrame(screen_.fraAddKeamane, screen_.optAddKeamane);
    v->addLayout(addresses, 1, 1);
    return w;
}

QWidget* SealWindow::buildSearch()
{
    auto* grid = new QGridLayout;
    auto field = [&](int row, const QString& caption, controls::TextInput& input, int stretch) {
        grid->addWidget(new QLabel(caption), row, 0);
        auto* e = new QLineEdit;
        binder_->text(input, e);
        grid->addWidget(e, row, 1, 1, stretch);
    };
    field(0, QStringLiteral("ⅠＤ"), screen_.txtIDNo, 1);
    field(1, QStringLiteral("名称"), screen_.txtName, 3);
    field(2, QStringLiteral("カナ"), screen_.txtNameKana, 3);

    auto* age = new QHBoxLayout;
    auto* from = new QLineEdit;
    auto* to = new QLineEdit;
    from->setMaximumWidth(48);
    to->setMaximumWidth(48);
    binder_->text(screen_.numtAge[0], from);
    binder_->text(screen_.numtAge[1], to);
    age->addWidget(from);
    age->addWidget(new QLabel(QStringLiteral("～")));
    age->addWidget(to);
    auto* ageBox = group(QString(), age);
    binder_->frame(screen_.fraAge, ageBox);
    grid->addWidget(ageBox, 0, 2);

    auto* birth = new QHBoxLayout;
    auto* month = new QLineEdit;
    month->setMaximumWidth(40);
    binder_->text(screen_.numBirth, month);
    birth->addWidget(month);
    birth->addWidget(new QLabel(QStringLiteral("月")));
    auto* birthBox = group(QString(), birth);
    binder_->frame(screen_.fraBirth, birthBox);
    grid->addWidget(birthBox, 0, 3);

    auto* kana = new QHBoxLayout;
    kana->setSpacing(2);
    for (auto& b : screen_.cmdAnk) {
        auto* btn = new QPushButton;
        btn->setFixedWidth(32);
        binder_->button(b, btn);
        kana->addWidget(btn);
    }
    grid->addWidget(group(QStringLiteral("簡単検索"), kana), 3, 0, 1, 3);

    auto* buttons = new QHBoxLayout;
    auto* disp = new QPushButton;
    auto* clr = new QPushButton;
    binder_->button(screen_.btnDisp, disp);
    binder_->button(screen_.btnClr, clr);
    buttons->addWidget(disp);
    buttons->addWidget(clr);
    grid->addLayout(buttons, 3, 3);

    auto* jisseki = new QHBoxLayout;
    auto* chk = new QCheckBox;
    auto* ym = new QLineEdit;
    auto* end = new QCheckBox;
    ym->setMinimumWidth(76);
    ym->setMaximumWidth(90);
    binder_->check(screen_.chkJisseki, chk);
    binder_->text(screen_.imJissekiYm, ym);
    binder_->check(screen_.chkEndKanja, end);
    jisseki->addWidget(chk);
    jisseki->addWidget(ym);
    jisseki->addWidget(end);
    auto* jissekiBox = group(QString(), jisseki);
    binder_->frame(screen_.fraJisseki, jissekiBox);
    grid->addWidget(jissekiBox, 4, 0, 1, 4);

    auto* hojyo = new QHBoxLayout;
    auto* lbl = new QLabel;
    auto* kaisyu = new QComboBox;
    kaisyu->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    kaisyu->setMinimumContentsLength(12);
    binder_->label(screen_.LblJyoken, lbl);
    binder_->combo(screen_.cmbKaisyu, kaisyu);
    hojyo->addWidget(lbl);
    hojyo->addWidget(kaisyu, 1);
    auto* hojyoBox = group(QString(), hojyo);
    binder_->frame(screen_.fraJyokenHojyo, hojyoBox);
    grid->addWidget(hojyoBox, 5, 0, 1, 4);

    return group(QStringLiteral("検索条件"), grid);
}

QWidget* SealWindow::buildList()
{
    auto* view = new QTableView;
    binder_->grid(screen_.fpSpread02, view,
                  {{1, QStringLiteral("対象")},
                   {4, QStringLiteral("名称")},
                   {2, QStringLiteral("ⅠＤ")},
                   {5, QStringLiteral("カナ")}});
    view->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    view->setColumnWidth(0, 44);
    view->setColumnWidth(2, 80);
    view->setColumnWidth(3, 160);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setAlternatingRowColors(false);
    return view;
}

QWidget* SealWindow::buildOrder()
{
    auto* v = new QVBoxLayout;
    auto* list = new QListWidget;
    list->setMinimumWidth(200);
    binder_->list(screen_.lstCheck, list);
    v->addWidget(list, 1);
    auto* check = new QCheckBox;
    auto* enter = new QCheckBox;
    auto* hint = new QLabel;
    binder_->check(screen_.chkCheck, check);
    binder_->check(screen_.chkEnter, enter);
    binder_->label(screen_.lblEnter, hint);
    // One line: a wrapping label makes the whole screen's height follow its width, and
    // the screen would then scroll at sizes where everything fits.
    v->addWidget(check);
    v->addWidget(enter);
    v->addWidget(hint);
    auto* buttons = new QHBoxLayout;
    auto* all = new QPushButton;
    binder_->button(screen_.btnAllSel, all);
    buttons->addWidget(all);
    for (auto& b : screen_.btnAllKai) {
        auto* btn = new QPushButton;
        binder_->button(b, btn);
        buttons->addWidget(btn);
    }
    v->addLayout(buttons);
    return group(QStringLiteral("印刷順"), v);
}

QWidget* SealWindow::buildSheet()
{
    auto* v = new QVBoxLayout;
    auto* sealType = new QComboBox;
    sealType->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    sealType->setMinimumContentsLength(12);
    binder_->combo(screen_.cmbSealType, sealType);
    v->addWidget(sealType);

    // The start cell pictures: one small grid per sheet, the start cell in black.
    auto* cells = new QHBoxLayout;
    for (controls::Grid* g : {&screen_.fpSpread01, &screen_.fpSpread_2x6, &screen_.fpSpread_3x10}) {
        auto* view = new QTableView;
        std::vector<std::pair<int, QString>> cols;
        for (int c = 1; c <= g->MaxCols(); ++c) cols.emplace_back(c, QString());
        binder_->grid(*g, view, cols);
        view->horizontalHeader()->hide();
        view->verticalHeader()->hide();
        view->horizontalHeader()->setDefaultSectionSize(g->MaxCols() == 3 ? 30 : 44);
        view->verticalHeader()->setDefaultSectionSize(g->MaxRows() == 10 ? 12 : 20);
        view->setSelectionMode(QAbstractItemView::NoSelection);
        view->setFixedSize(g->MaxCols() * (g->MaxCols() == 3 ? 30 : 44) + 4,
                           g->MaxRows() * (g->MaxRows() == 10 ? 12 : 20) + 4);
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        view->setFocusPolicy(Qt::NoFocus);
        view->clearSelection();
        cells->addWidget(view);
    }
    auto* position = group(QString(), cells);
    binder_->frame(screen_.fraPosition, position);
    v->addWidget(position);

    auto* envelope = new QVBoxLayout;
    auto* hutou = new QComboBox;
    hutou->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    hutou->setMinimumContentsLength(12);
    binder_->combo(screen_.cmbHutou, hutou);
    envelope->addWidget(hutou);
    auto* pictures = new QHBoxLayout;
    for (size_t i = 0; i < screen_.picFtType.size(); ++i) {
        auto* pic = new ClickableLabel;
        pic->setPixmap(envelopePicture(static_cast<int>(i)));
        binder_->picture(screen_.picFtType[i], pic);
        pictures->addWidget(pic);
    }
    envelope->addLayout(pictures);
    auto* envelopeBox = group(QString(), envelope);
    binder_->frame(screen_.frmHutou, envelopeBox);
    v->addWidget(envelopeBox);

    auto* copies = new QHBoxLayout;
    auto* maisu = new QLineEdit;
    maisu->setMaximumWidth(48);
    auto* unit = new QLabel;
    binder_->text(screen_.numMaisu, maisu);
    binder_->label(screen_.lblMaisu, unit);
    copies->addWidget(maisu);
    copies->addWidget(unit);
    copies->addStretch(1);
    auto* copiesBox = group(QString(), copies);
    binder_->frame(screen_.fraMaisu, copiesBox);
    v->addWidget(copiesBox);

    // The footnote: an editable list whose text the operator may type.
    auto* foot = new QHBoxLayout;
    auto* combo = new QComboBox;
    combo->setEditable(true);
    // As wide as the longest footnote: the defaults are ten full-width characters.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    binder_->combo(screen_.cboKyakutyuList, combo);
    connect(combo, &QComboBox::editTextChanged, this, [this](const QString& t) {
        if (t != screen_.cboKyakutyuList.text()) platform_.dispatch([&] { screen_.cboKyakutyuList.setText(t); });
    });
    screen_.cboKyakutyuList.observe([this, combo](const controls::Change&) {
        if (combo->currentText() != screen_.cboKyakutyuList.text()) {
            const QSignalBlocker block(combo);
            combo->setEditText(screen_.cboKyakutyuList.text());
        }
    });
    auto* add = new QPushButton;
    binder_->button(screen_.btnAddKyakutyu, add);
    foot->addWidget(combo, 1);
    foot->addWidget(add);
    v->addWidget(group(QStringLiteral("脚注入力"), foot));
    return group(QStringLiteral("用紙"), v);
}

QWidget* SealWindow::buildCommands()
{
    auto* w = new QWidget;
    auto* h = new QHBoxLayout(w);
    h->setContentsMargins(9, 0, 9, 2);
    for (controls::Button* b :
         {&screen_.btnJisseki[0], &screen_.btnJisseki[1], &screen_.btnDouishoList, &screen_.btnSejutsuKeika}) {
        auto* btn = new QPushButton;
        binder_->button(*b, btn);
        h->addWidget(btn);
    }
    h->addStretch(1);
    for (controls::Button* b : {&screen_.cmdMenu, &screen_.btnExit}) {
        auto* btn = new QPushButton;
        binder_->button(*b, btn);
        h->addWidget(btn);
    }
    return w;
}

void SealWindow::buildMenus()
{
    Binder& b = *binder_;
    QMenu* func = b.submenu(screen_.mnFunc, this);
    for (controls::MenuItem* m : {&screen_.mnDouiSet, &screen_.mnF04, &screen_.mnMenuPrint, &screen_.mnMenuPreview,
                                  &screen_.mnMenuReturn, &screen_.mnMenuExit})
        b.menuItem(func, *m);
    menuBar()->addMenu(func);

    // Each setting has its submenu; the marks show which choice holds.
    QMenu* settings = b.submenu(screen_.mnSettei, this);
    auto marks = [&](controls::MenuItem& title, std::deque<controls::MenuItem>& items) {
        QMenu* sub = b.submenu(title, settings);
        for (auto& m : items) b.menuItem(sub, m, true);
        settings->addMenu(sub);
    };
    marks(screen_.mnSetteiCK, screen_.mnCKOnOff);
    marks(screen_.mnSetteiHokenja, screen_.mnHokenjaDisp);
    for (auto [title, item] : {std::pair{&screen_.mnSetteiCheck, &screen_.mnCheckOn},
                               std::pair{&screen_.mnSetteiEnter, &screen_.mnEnterOn}}) {
        QMenu* sub = b.submenu(*title, settings);
        b.menuItem(sub, *item, true);
        settings->addMenu(sub);
    }
    menuBar()->addMenu(settings);

    QMenu* help = b.submenu(screen_.mnHelp, this);
    b.menuItem(help, screen_.mnVer);
    b.menuItem(help, screen_.mnDispHelp);
    menuBar()->addMenu(help);
}

void SealWindow::closeEvent(QCloseEvent* event)
{
    // The window's close box is the model's to handle; the model's unload hides us.
    event->ignore();
    platform_.dispatch([&] { screen_.closeByUser(); });
}

}  // namespace gui
