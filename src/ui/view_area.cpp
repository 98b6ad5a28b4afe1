#include "ui/view_area.h"

#include <algorithm>

#include <QAbstractButton>
#include <QDockWidget>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

#include "ui/design_form.h"

namespace ui {
namespace {

constexpr QSize kSmallestView(160, 90);
constexpr QSize kSmallestScript(180, 70);
constexpr double kUsualWidth = 330;   // of the script, design pixels
constexpr double kUsualHeight = 110;  // where it is docked above or below the view
constexpr double kTitleHeight = 22;
constexpr int kTitleFont = 13;
constexpr double kGrid = 24;  // icons are drawn on a square of this side
constexpr QColor kTitle(208, 208, 210);
constexpr QColor kEdge(176, 176, 180);
constexpr QColor kInk(24, 24, 32);
constexpr QColor kUnderPointer(190, 192, 200);

/// A small flat button of the dock's title.
class TitleButton final : public QAbstractButton {
 public:
    TitleButton(const QPainterPath& icon, const char* name, const char* toolTip, QWidget* parent)
        : QAbstractButton(parent), icon_(icon)
    {
        setObjectName(QString::fromLatin1(name));
        setToolTip(QString::fromLatin1(toolTip));
        setAccessibleName(QString::fromLatin1(toolTip));
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
    }

 protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isEnabled() && (underMouse() || isDown()))
            painter.fillRect(rect(), kUnderPointer);
        const double side = std::min(width(), height());
        painter.translate((width() - side) / 2, (height() - side) / 2);
        painter.scale(side / kGrid, side / kGrid);
        painter.setPen(QPen(isEnabled() ? kInk : kEdge, 1.8));
        painter.drawPath(icon_);
    }

 private:
    QPainterPath icon_;
};

QPainterPath Cross()
{
    QPainterPath path(QPointF(7, 7));
    path.lineTo(17, 17);
    path.moveTo(17, 7);
    path.lineTo(7, 17);
    return path;
}

QPainterPath TwoWindows()
{
    QPainterPath path;
    path.addRect(6, 10, 8, 8);
    path.moveTo(10, 10);
    path.lineTo(10, 6);
    path.lineTo(18, 6);
    path.lineTo(18, 14);
    path.lineTo(14, 14);
    return path;
}

/// What the dock is moved by.
class DockTitle final : public QWidget {
 public:
    explicit DockTitle(QDockWidget* dock) : QWidget(dock)
    {
        setToolTip(QStringLiteral("Drag the script to another side, or out of the window"));
        text_ = new QLabel(dock->windowTitle(), this);
        float_ = new TitleButton(TwoWindows(), "cmdFloatScript",
                                 "Take the script out of the window, or put it back", this);
        close_ = new TitleButton(Cross(), "cmdCloseScript", "Hide the script", this);
        connect(float_, &QAbstractButton::clicked, dock,
                [dock] { dock->setFloating(!dock->isFloating()); });
        connect(close_, &QAbstractButton::clicked, dock, &QWidget::close);
    }

    void Fit(fountain::ScaleFactors scale)
    {
        height_ = static_cast<int>(kTitleHeight * scale.y);
        QFont font = FormFont();
        font.setPixelSize(static_cast<int>(kTitleFont * std::min(scale.x, scale.y)));
        text_->setFont(font);
        updateGeometry();
        Arrange();
    }

    [[nodiscard]] QSize sizeHint() const override { return {kSmallestScript.width(), height_}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, height_}; }

 protected:
    void resizeEvent(QResizeEvent*) override { Arrange(); }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), kTitle);
        painter.fillRect(QRect(0, height() - 1, width(), 1), kEdge);
    }

 private:
    void Arrange()
    {
        const int side = height();
        text_->setGeometry(side / 3, 0, width() - 3 * side, side);
        float_->setGeometry(width() - 2 * side, 0, side, side - 1);
        close_->setGeometry(width() - side, 0, side, side - 1);
    }

    QLabel* text_;
    QAbstractButton* float_;
    QAbstractButton* close_;
    int height_ = static_cast<int>(kTitleHeight);
};

bool IsUpright(Qt::DockWidgetArea side)
{
    return side == Qt::LeftDockWidgetArea || side == Qt::RightDockWidgetArea;
}

}  // namespace

ViewArea::ViewArea(QWidget* parent) : QMainWindow(parent)
{
    setWindowFlags(Qt::Widget);  // a part of its window, not one of its own
    setMinimumSize(1, 1);
    setContextMenuPolicy(Qt::NoContextMenu);
    setDockOptions(QMainWindow::DockOptions());
    center_ = new QWidget(this);
    center_->setMinimumSize(kSmallestView);
    center_->installEventFilter(this);
    fraView_ = new ViewWidget(center_);
    fraView_->setObjectName(QStringLiteral("fraView"));
    fraLegends_ = new LegendsFrame(center_);
    fraLegends_->setObjectName(QStringLiteral("fraLegends"));
    fraLegends_->hide();
    setCentralWidget(center_);
}

bool ViewArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == center_ && event->type() == QEvent::Resize)
        Arrange();
    if (watched == dock_ && event->type() == QEvent::Resize && !dock_->isFloating())
        place_.extent = IsUpright(dockWidgetArea(dock_)) ? dock_->width() : dock_->height();
    if (watched == dock_ && event->type() == QEvent::Close)
        QMetaObject::invokeMethod(this, &ViewArea::ScriptClosed, Qt::QueuedConnection);
    return QMainWindow::eventFilter(watched, event);
}

void ViewArea::Fit(fountain::ScaleFactors scale)
{
    scale_ = scale;
    if (dock_ != nullptr) {
        static_cast<DockTitle*>(dock_->titleBarWidget())->Fit(scale);
        scriptView_->Fit(scale);
    }
    Arrange();
}

void ViewArea::ShowLegends(bool shown)
{
    if (legends_ == shown)
        return;
    legends_ = shown;
    Arrange();
}

void ViewArea::Arrange()
{
    QRect view = center_->rect();
    fraLegends_->setVisible(legends_);
    if (legends_) {
        const int wide = std::min(PlaceOf(FormEntry("fraLegends"), scale_).width(), view.width());
        const QRect legends(view.right() + 1 - wide, view.top(), wide, view.height());
        fraLegends_->setGeometry(legends);
        fraLegends_->Fit(scale_);
        view.setRight(legends.left() - 1);
    }
    fraView_->setGeometry(view);
    fraView_->Fit();
    emit ViewFitted();
}

void ViewArea::ShowScript(bool shown)
{
    if (shown == ScriptShown())
        return;
    if (dock_ == nullptr)
        BuildDock();
    dock_->setVisible(shown);
}

bool ViewArea::ScriptShown() const
{
    return dock_ != nullptr && !dock_->isHidden();
}

const QWidget* ViewArea::FloatingScript() const
{
    return dock_ != nullptr && dock_->isFloating() ? dock_ : nullptr;
}

void ViewArea::BuildDock()
{
    dock_ = new QDockWidget(QStringLiteral("Script"), this);
    dock_->setObjectName(QStringLiteral("dockScript"));
    dock_->setAttribute(Qt::WA_WindowPropagation);  // it looks the same where it floats
    scriptView_ = new ScriptView(dock_);
    scriptView_->setObjectName(QStringLiteral("scriptView"));
    scriptView_->setAccessibleName(QStringLiteral("Script"));
    scriptView_->setMinimumSize(kSmallestScript);
    dock_->setWidget(scriptView_);
    auto* title = new DockTitle(dock_);
    dock_->setTitleBarWidget(title);
    title->Fit(scale_);
    scriptView_->Fit(scale_);
    emit ScriptBuilt();
    dock_->installEventFilter(this);
    PlaceDock();
}

void ViewArea::PlaceDock()
{
    const bool upright = IsUpright(place_.side);
    addDockWidget(place_.side, dock_);
    const int room = upright ? width() : height();
    const double usual = upright ? kUsualWidth * scale_.x : kUsualHeight * scale_.y;
    const int extent = place_.extent > 0 ? place_.extent : static_cast<int>(usual);
    dock_->show();
    resizeDocks({dock_}, {std::min(extent, room * 2 / 3)}, upright ? Qt::Horizontal : Qt::Vertical);
    if (!place_.floating)
        return;
    dock_->setFloating(true);
    dock_->setGeometry(OnScreens(*place_.floating, AvailableScreens()));
}

DockPlace ViewArea::ScriptPlace() const
{
    if (dock_ == nullptr)
        return place_;
    DockPlace place = place_;
    const Qt::DockWidgetArea side = dockWidgetArea(dock_);
    if (side != Qt::NoDockWidgetArea)
        place.side = side;
    place.floating.reset();
    if (dock_->isFloating())
        place.floating = dock_->geometry();
    return place;
}

}  // namespace ui
