#include "ui/frm_fountain.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOptionMenuItem>
#include <QToolTip>

#include "ui/menus.h"

namespace ui {

/// The items of the menu bar are as high as the bar, and those of its menus wide enough for a check
/// mark that has grown with the letters.
class MenuBarStyle final : public QProxyStyle {
 public:
    explicit MenuBarStyle(QObject* parent) : QProxyStyle(QStringLiteral("Fusion"))
    {
        setParent(parent);
    }

    int itemHeight = 0;

    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& size, const QWidget* widget) const override
    {
        const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
        if (type == CT_MenuBarItem)
            return {usual.width(), itemHeight};
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        const bool checkable = type == CT_MenuItem && item != nullptr &&
                               item->checkType != QStyleOptionMenuItem::NotCheckable;
        return checkable ? usual + QSize(usual.height(), 0) : usual;
    }
};

namespace {

constexpr QSize kSmallestWindow(800, 600);
constexpr int kToolTip = 12;  // design pixels
constexpr QColor kForm(224, 224, 224);
constexpr QColor kStrip(208, 208, 210);
constexpr QColor kEdge(176, 176, 180);
constexpr QColor kSurface(214, 214, 216);
constexpr QColor kInk(24, 24, 32);

/// A quiet rounded surface that holds a group of controls.
class Surface final : public QWidget {
 public:
    using QWidget::QWidget;

 protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(kEdge, 1));
        painter.setBrush(kSurface);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    }
};

/// Holds the focus while no control needs it, so that the keys reach the window.
class FocusButton final : public QPushButton {
 public:
    using QPushButton::QPushButton;

 protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
    void paintEvent(QPaintEvent*) override {}
};

// Commands are read in them, so they grow with the window; they never become too small to read.
void FitToolTips(fountain::ScaleFactors scale)
{
    QFont font = FormFont();
    font.setPixelSize(static_cast<int>(kToolTip * std::max(1.0, std::min(scale.x, scale.y))));
    if (QToolTip::font() != font)
        QToolTip::setFont(font);
}

QPalette FormPalette()
{
    QPalette palette(kForm, kForm);
    palette.setColor(QPalette::WindowText, kInk);
    palette.setColor(QPalette::Text, kInk);
    palette.setColor(QPalette::ButtonText, kInk);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(48, 84, 168));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    const QColor faint(132, 134, 142);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, faint);
    palette.setColor(QPalette::Disabled, QPalette::Text, faint);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, faint);
    return palette;
}

}  // namespace

frmFountain::frmFountain(editor::Editor& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), driver_(editor, this)
{
    setObjectName(QStringLiteral("frmFountain"));
    setAccessibleName(QStringLiteral("Fountain editor"));
    setPalette(FormPalette());
    setFont(FormFont());
    setMinimumSize(kSmallestWindow);
    BuildMenus();
    BuildFileMenus();
    BuildHelp();
    BuildView();
    BuildTransport();
    BuildPanel();
    BuildStatus();
    DescribeControls();
    resize(fountain::kDesignWidth, fountain::kDesignHeight);
    connect(&driver_, &TimerDriver::Ticked, this, &frmFountain::Refresh);
    qApp->installEventFilter(this);
    cmdFocus_->setFocus();
    Refresh();  // the first resize, when the size is known, fits the form
}

void frmFountain::BuildMenus()
{
    mnuBar_ = new QMenuBar(this);
    mnuBar_->setNativeMenuBar(false);
    mnuBar_->setObjectName(QStringLiteral("mnuBar"));
    menuBarStyle_ = new MenuBarStyle(mnuBar_);
    mnuBar_->setStyle(menuBarStyle_);
    for (std::size_t i = 0; i < menus_.size(); ++i) {
        const MenuEntry& entry = Menus()[i];
        menus_[i] = mnuBar_->addMenu(QString::fromLatin1(entry.caption));
        menus_[i]->setStyle(menuBarStyle_);
        menus_[i]->setObjectName(QString::fromLatin1(entry.name));
        for (std::size_t item = 0; item < entry.items.size(); ++item) {
            const MenuItem& row = entry.items[item];
            QAction* action = row.caption == nullptr
                                  ? menus_[i]->addSeparator()
                                  : menus_[i]->addAction(QString::fromLatin1(row.caption));
            action->setObjectName(
                QStringLiteral("%1_%2").arg(QLatin1String(entry.itemName)).arg(item));
            action->setCheckable(row.checkable);
            action->setShortcut(QString::fromLatin1(row.shortcut));
            actions_[i].push_back(action);
        }
    }
    connect(menus_[timeline::kFileMenu], &QMenu::aboutToShow, this, [this] {
        editor_.mnuFile_Click();
        Refresh();
    });
    for (std::size_t i = 0; i < actions_[timeline::kFileMenu].size(); ++i)
        connect(actions_[timeline::kFileMenu][i], &QAction::triggered, this,
                [this, i] { mnuFileAction_Click(static_cast<int>(i)); });
    for (std::size_t i = 0; i < actions_[timeline::kDisplayMenu].size(); ++i)
        connect(actions_[timeline::kDisplayMenu][i], &QAction::triggered, this,
                [this, i] { mnuDisplayAction_Click(static_cast<int>(i)); });
}

void frmFountain::BuildTransport()
{
    lblTime_ = AddLabel("lblTime", Qt::AlignLeft | Qt::AlignVCenter);
    (new Surface(this))->setObjectName(QStringLiteral("fraSong"));
    AddLabel("lblSong", Qt::AlignLeft | Qt::AlignVCenter)->setText(QStringLiteral("Music"));
    using editor::Editor;
    mmSong_ = {AddButton("mmSong_prev", TransportIcon::Previous, &Editor::mmSong_PrevClick),
               AddButton("mmSong_play", TransportIcon::Play, &Editor::mmSong_PlayClick),
               AddButton("mmSong_pause", TransportIcon::Pause, &Editor::mmSong_PauseClick),
               AddButton("mmSong_stop", TransportIcon::Stop, &Editor::mmSong_StopClick)};
    (new Surface(this))->setObjectName(QStringLiteral("fraEditing"));
    AddLabel("lblEditing", Qt::AlignLeft | Qt::AlignVCenter)->setText(QStringLiteral("Editing"));
    mmEditing_ = {
        AddButton("mmEditing_play", TransportIcon::Listen, &Editor::mmEditing_PlayClick),
        AddButton("mmEditing_add", TransportIcon::AddMark, &Editor::mmEditing_AddClick),
        AddButton("mmEditing_prev", TransportIcon::PreviousMark, &Editor::mmEditing_PrevClick),
        AddButton("mmEditing_next", TransportIcon::NextMark, &Editor::mmEditing_NextClick),
        AddButton("mmEditing_clear", TransportIcon::ClearMarks, &Editor::mmEditing_ClearClick)};
    (new Surface(this))->setObjectName(QStringLiteral("fraTime"));
    BuildTimeSpinners();
    BuildMarks();
    lblABCodes_ = AddLabel("lblABCodes", Qt::AlignLeft | Qt::AlignVCenter);
    lblABCodes_->hide();
}

void frmFountain::BuildStatus()
{
    lblControlFile_ = AddLabel("lblControlFile", Qt::AlignLeft | Qt::AlignVCenter);
    lblMusic_ = AddLabel("lblMusic", Qt::AlignLeft | Qt::AlignVCenter);
    lblCounts_ = AddLabel("lblCounts", Qt::AlignRight | Qt::AlignVCenter);
    cmdFocus_ = new FocusButton(this);
    cmdFocus_->setObjectName(QStringLiteral("cmdFocus"));
    cmdFocus_->setAccessibleName(QStringLiteral("Keys of the window"));
    cmdFocus_->setGeometry(-2, -2, 1, 1);
    cmdFocus_->setFocusPolicy(Qt::ClickFocus);
}

void frmFountain::DescribeControls()
{
    QWidget* before = cmdFocus_;
    for (const FormControl& control : Form()) {
        auto* widget = findChild<QWidget*>(QString::fromLatin1(control.name));
        Q_ASSERT_X(widget, "frmFountain", control.name);
        widget->setAccessibleName(QString::fromLatin1(control.accessibleName));
        widget->setToolTip(QString::fromLatin1(control.toolTip));
        if (widget == fraControls_) {
            for (QWidget* panelWidget : fraControls_->TabOrder())
                setTabOrder(std::exchange(before, panelWidget), panelWidget);
            continue;
        }
        if ((widget->focusPolicy() & Qt::TabFocus) == 0)
            continue;
        setTabOrder(before, widget);
        before = widget;
    }
}

QLabel* frmFountain::AddLabel(const char* name, Qt::Alignment alignment)
{
    auto* label = new QLabel(this);
    label->setObjectName(QString::fromLatin1(name));
    label->setAlignment(alignment);
    label->setTextFormat(Qt::PlainText);
    return label;
}

TransportButton* frmFountain::AddButton(const char* name, TransportIcon icon,
                                        void (editor::Editor::*handler)())
{
    auto* button = new TransportButton(icon, this);
    button->setObjectName(QString::fromLatin1(name));
    connect(button, &QAbstractButton::clicked, this,
            [this, handler] { Transact([editor = &editor_, handler] { (editor->*handler)(); }); });
    return button;
}

void frmFountain::resizeEvent(QResizeEvent*)
{
    FitForm();
}

void frmFountain::FitForm()
{
    const fountain::ScaleFactors scale = fountain::FitToScreen(width(), height());
    PlaceMenus(scale);  // before the bar gets its size: items that are too high for it are hidden
    for (const FormControl& control : Form())
        PlaceControl(control, scale);
    PlaceView(scale);
    fraControls_->Fit(scale);
    FitToolTips(scale);
    if (fraShift_ != nullptr)
        fraShift_->Fit(scale);
    if (fraFileSelect_ != nullptr)
        fraFileSelect_->Fit(scale);
    Refresh();
}

void frmFountain::PlaceControl(const FormControl& control, fountain::ScaleFactors scale)
{
    auto* widget = findChild<QWidget*>(QString::fromLatin1(control.name));
    if (widget->parentWidget() != this || widget == viewArea_)
        return;
    widget->setGeometry(PlaceOf(control, scale));
    if (control.font == 0 || widget == mnuBar_)
        return;
    QFont family = widget == lblABCodes_ ? CodesFont() : FormFont();
    family.setBold(widget == lblTime_);
    widget->setFont(FontOf(control, scale, family));
}

void frmFountain::PlaceMenus(fountain::ScaleFactors scale)
{
    const FormControl& entry = FormEntry("mnuBar");
    menuBarStyle_->itemHeight = PlaceOf(entry, scale).height();
    const QFont font = FontOf(entry, scale, FormFont());
    mnuBar_->setFont(font);
    for (QMenu* menu : menus_)
        menu->setFont(font);
    mnuEdit_->setFont(font);
}

void frmFountain::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kForm);
    const fountain::ScaleFactors scale = fountain::FitToScreen(width(), height());
    if (pendingShown_)
        PaintChangedMark(painter, Scaled({8, 726, 9, 9}, scale));
    const QRect strip = Scaled({0, 742, 1024, 26}, scale);
    painter.fillRect(strip, kStrip);
    painter.fillRect(QRect(strip.left(), strip.top(), strip.width(), 1), kEdge);
}

}  // namespace ui
