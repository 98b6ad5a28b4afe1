// The row of the view, the time strip and the script; where the window stands on the screen.
#include <utility>

#include <QDockWidget>
#include <QScreen>
#include <QShortcut>
#include <QWindowStateChangeEvent>

#include "ui/frm_fountain.h"
#include "ui/menus.h"

namespace ui {
namespace {

constexpr int kPeaksPoll = 100;   // ms
constexpr int kFrameComes = 200;  // ms that a window manager takes
constexpr const char* kWindowKey = "Window";
constexpr const char* kTimeStripKey = "TimeStrip";
constexpr const char* kScriptKey = "ScriptView";
constexpr const char* kDocksKey = "Docks";

QString SettingText(const editor::SettingsStore& settings, const char* key)
{
    return QString::fromStdString(settings.GetSettingValue(key, ""));
}

}  // namespace

void frmFountain::BuildView()
{
    viewArea_ = new ViewArea(this);
    viewArea_->setObjectName(QStringLiteral("viewArea"));
    fraView_ = viewArea_->View();
    connect(fraView_, &ViewWidget::Painted, this, [this] {
        if (!std::exchange(painted_, true))
            emit FirstPainted();
    });
    connect(viewArea_, &ViewArea::ViewFitted, this, &frmFountain::RefreshView);
    connect(viewArea_, &ViewArea::ScriptBuilt, this, &frmFountain::FillScript);
    connect(viewArea_, &ViewArea::ScriptClosed, this, [this] {
        cmdFocus_->setFocus();
        Refresh();
    });
    auto* find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
    connect(find, &QShortcut::activated, this, &frmFountain::FindInScript);

    timeStrip_ = new TimeStrip(this);
    timeStrip_->setObjectName(QStringLiteral("timeStrip"));
    connect(timeStrip_, &TimeStrip::TimeChosen, this, &frmFountain::GoToChosen);
    peaksPoll_.setInterval(kPeaksPoll);
    connect(&peaksPoll_, &QTimer::timeout, this, &frmFountain::RefreshStrip);
}

void frmFountain::FillScript()
{
    connect(viewArea_->Script(), &ScriptView::TimeChosen, this, &frmFountain::GoToChosen);
    // A script that leaves the window or comes back hands its focus to whatever is next.
    connect(viewArea_->Dock(), &QDockWidget::topLevelChanged, cmdFocus_,
            [this] { cmdFocus_->setFocus(); });
    RefreshScript();
}

void frmFountain::FindInScript()
{
    if (Covered())
        return;
    viewArea_->ShowScript(true);
    Refresh();
    viewArea_->Dock()->raise();
    if (viewArea_->Dock()->isFloating())
        viewArea_->Dock()->activateWindow();
    viewArea_->Script()->EditFilter();
}

void frmFountain::ShowScript(bool shown)
{
    viewArea_->ShowScript(shown);
    if (!shown)
        cmdFocus_->setFocus();
}

void frmFountain::ShowTimeStrip(bool shown)
{
    stripShown_ = shown;
    if (!shown && timeStrip_->hasFocus())
        cmdFocus_->setFocus();
    PlaceView(fountain::FitToScreen(width(), height()));
}

// Without the strip its room belongs to the view.
void frmFountain::PlaceView(fountain::ScaleFactors scale)
{
    QRect view = PlaceOf(FormEntry("viewArea"), scale);
    if (!stripShown_)
        view.setBottom(PlaceOf(FormEntry("timeStrip"), scale).bottom());
    timeStrip_->setVisible(stripShown_);
    viewArea_->setGeometry(view);
    viewArea_->Fit(scale);
}

// The pointer may choose times faster than their pictures can be painted: then the last one that
// it chose meanwhile is gone to.
void frmFountain::GoToChosen(std::int32_t time)
{
    if (movedLately_) {
        chosenTime_ = time;
        return;
    }
    movedLately_ = true;
    QTimer::singleShot(0, this, [this] {
        movedLately_ = false;
        if (const auto chosen = std::exchange(chosenTime_, std::nullopt))
            GoToChosen(*chosen);
    });
    GoToTypedTime();
    editor_.MoveTo(time);
    Refresh();
}

void frmFountain::RefreshStrip()
{
    FollowMusic();
    if (!stripShown_)
        return;
    const std::int32_t length = editor_.ShowLength();
    timeStrip_->ShowChoreography(editor_.Choreography(), editor_.Version());
    timeStrip_->ShowMarks(editor_.Playback().lstMarks());
    timeStrip_->ShowPeaks(peaks_ == nullptr ? nullptr : peaks_->Latest());
    timeStrip_->ShowPosition(editor_.Timeline().CurrentTime(), length,
                             editor_.Playback().Playing());
    Enable(timeStrip_, length > 0 && !Covered());
}

// Nothing is read before the music is open: the start belongs to the window.
void frmFountain::FollowMusic()
{
    if (peaks_ == nullptr || musicPending_)
        return;
    if (peaksOf_ != editor_.MusicVersion()) {
        peaksOf_ = editor_.MusicVersion();
        peaks_->Start(editor_.mmSong().FileName());
    }
    if (!peaks_->Busy())
        peaksPoll_.stop();
    else if (!peaksPoll_.isActive())
        peaksPoll_.start();
}

void frmFountain::RefreshScript()
{
    if (!viewArea_->ScriptShown())
        return;
    ScriptView* script = viewArea_->Script();
    script->ShowChoreography(editor_.Choreography(), editor_.Version(), editor_.mmSong().Length());
    script->ShowTime(editor_.Timeline().CurrentTime(), editor_.Playback().Playing());
    Enable(viewArea_->Dock(), !Covered());
}

void frmFountain::UseSettings(editor::SettingsStore& settings)
{
    settings_ = &settings;
    stripShown_ = editor::GetSettingValue(settings, kTimeStripKey, true);
    viewArea_->SetScriptPlace(DockPlaceOf(SettingText(settings, kDocksKey)));
}

void frmFountain::ShowOnScreen()
{
    std::optional<WindowPlace> place;
    if (settings_ != nullptr)
        place = WindowPlaceOf(SettingText(*settings_, kWindowKey));
    const bool maximised = !place || place->maximised;
    // Without a window manager nobody would maximise the window.
    setGeometry(place ? OnScreens(place->place, AvailableScreens())
                      : screen()->availableGeometry());
    if (maximised)
        showMaximized();
    else
        show();
    // Not painted yet, but of the size in which the script finds its place.
    if (settings_ != nullptr && editor::GetSettingValue(*settings_, kScriptKey, false))
        viewArea_->ShowScript(true);
    activateWindow();
    QTimer::singleShot(kFrameComes, this, &frmFountain::KeepFrameOnScreens);
}

void frmFountain::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange &&
        static_cast<QWindowStateChangeEvent*>(event)->oldState().testFlag(Qt::WindowMaximized))
        QTimer::singleShot(kFrameComes, this, &frmFountain::KeepFrameOnScreens);
}

// The place of a window is that within its frame, which is not known before the window has it.
void frmFountain::KeepFrameOnScreens()
{
    if (!isVisible() || windowState().testAnyFlags(Qt::WindowMaximized | Qt::WindowMinimized |
                                                   Qt::WindowFullScreen))
        return;
    const QRect frame = frameGeometry();
    const QRect seen = OnScreens(frame, AvailableScreens());
    if (seen == frame)
        return;
    const QRect inner = geometry();
    setGeometry(seen.adjusted(inner.left() - frame.left(), inner.top() - frame.top(),
                              inner.right() - frame.right(), inner.bottom() - frame.bottom()));
}

void frmFountain::SaveSettings()
{
    if (settings_ == nullptr)
        return;
    const WindowPlace place{isMaximized() ? normalGeometry() : geometry(), isMaximized()};
    settings_->SaveSettingValue(kWindowKey, TextOf(place).toStdString());
    editor::SaveSettingValue(*settings_, kTimeStripKey, stripShown_);
    editor::SaveSettingValue(*settings_, kScriptKey, viewArea_->ScriptShown());
    settings_->SaveSettingValue(kDocksKey, TextOf(viewArea_->ScriptPlace()).toStdString());
}

}  // namespace ui
