// Draws the pictures of the manual: the window itself, opened without a screen, so that the manual
// shows the program as it is. What is named here and is not there any more fails the build.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QTemporaryDir>
#include <QThread>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "editor/editor.h"
#include "fountain/fountain.h"
#include "render/scene_painter.h"
#include "sound/peaks.h"
#include "support/hand_player.h"
#include "ui/application.h"
#include "ui/frm_fountain.h"
#include "ui/print_preview.h"

namespace {

constexpr int kDeviceWidth = 384;
constexpr int kWindowWidth = 700;  // of the picture of the whole window
constexpr int kPageWidth = 700;    // what a page has room for
constexpr QMargins kAround(6, 6, 6, 6);
constexpr QMargins kWithHeading(6, 28, 6, 6);
constexpr int kPeakWait = 50;  // ms
constexpr int kMostPeakWaits = 400;
constexpr std::int32_t kMoment = 68'700;       // ms; three commands in the midst of the music
constexpr std::int32_t kQuietMoment = 61'900;  // one command alone

[[noreturn]] void Fail(const QString& problem)
{
    std::fprintf(stderr, "help_pictures: %s\n", qPrintable(problem));
    std::exit(1);
}

/// The pictures of a folder.
class Album {
 public:
    explicit Album(const QString& folder) : folder_(folder)
    {
        if (!folder_.mkpath(QStringLiteral(".")))
            Fail(folder + QStringLiteral(": cannot be made"));
    }

    void Add(const char* name, const QImage& picture) const
    {
        const QString file = folder_.filePath(QStringLiteral("%1.png").arg(QLatin1String(name)));
        const QImage page =
            picture.copy(0, 0, std::min(picture.width(), kPageWidth), picture.height());
        if (picture.isNull() || !page.save(file, "PNG", 0))
            Fail(file + QStringLiteral(": cannot be written"));
    }

 private:
    QDir folder_;
};

struct NoPrompts final : editor::Prompts {
    void Warn(const std::string&) override {}
    bool Ask(const std::string&, const std::string&, editor::Icon) override { return true; }
};

struct NoListener final : fountain::FountainListener {
    void OnOperatorDisplay(std::uint8_t) override {}
    void OnResetDevices() override {}
};

/// A device alone, as commands make it.
struct Device {
    const char* picture;
    std::vector<std::uint8_t> commands;  ///< address, data
};

void DrawDevices(const Album& album)
{
    const std::vector<Device> devices{
        {"rings", {51, 2, 1, 49, 2, 50, 3, 51, 4, 52, 5, 53}},
        {"cake", {51, 10, 48, 54}},
        {"sweeps", {51, 4, 6, 53}},
        {"candelabras", {51, 3, 8, 53}},
        {"bazookas", {16, 4, 7, 21}},
        {"spout", {51, 1, 7, 37}},
        {"curtains", {51, 1, 24, 16, 9, 53}},
        {"peacock", {25, 3, 26, 3, 9, 101}},
        {"voice", {54, 1, 51, 2, 1, 49}},
        {"groups", {49, 4, 50, 2, 48, 20, 48, 35}},
        {"joined", {49, 4, 50, 2, 3, 64 + 16 + 5, 3, 64 + 32 + 1}},
    };
    const double scale = double{kDeviceWidth} / fountain::kDesignWidth;
    const fountain::SceneLayout layout = fountain::Fitted(fountain::DesignLayout(), {scale, scale});
    const fountain::Measures measures = fountain::Measure(layout);
    const int height = static_cast<int>(layout.fraView.height / fountain::kUnitsPerPixel);
    for (const Device& device : devices) {
        fountain::Fountain fountain;
        NoListener listener;
        fountain.ApplyCommands(std::string(device.commands.begin(), device.commands.end()),
                               listener);
        QImage picture(kDeviceWidth, height, QImage::Format_RGB32);
        picture.fill(Qt::black);
        QPainter painter(&picture);
        render::SceneCache cache;
        render::PaintScene(
            painter,
            fountain::BuildScene(fountain.State(), fountain.Drawn(),
                                 {.Candelabras = true, .BackCurtain = true}, layout, measures),
            cache);
        painter.end();
        album.Add(device.picture, picture);
    }
}

/// The window over a show, with music that nobody hears.
class Desk {
 public:
    Desk()
    {
        player_.musicLength = 93'000;
        editor_.OpenShow("mountain_hall");
        if (!editor_.Choreography().fileExists)
            Fail(QStringLiteral("the sample show cannot be read"));
        editor_.FinishStartUp();
        window_.UsePeaks(peaks_);
        window_.resize(fountain::kDesignWidth, fountain::kDesignHeight);
        window_.setAttribute(Qt::WA_DontShowOnScreen);
        window_.show();
        Settle();
    }

    editor::Editor& Editor() { return editor_; }

    void Settle()
    {
        window_.Refresh();
        QApplication::processEvents();
    }

    /// Waits for the outline of the music; where it cannot be read the manual goes without.
    void AwaitPeaks()
    {
        for (int i = 0; i < kMostPeakWaits && peaks_.Busy(); ++i)
            QThread::msleep(kPeakWait);
        Settle();
    }

    /// Plays through the marks and sets them, as one who listens does.
    void SetMarks(std::initializer_list<std::int32_t> times)
    {
        editor_.mmSong_PlayClick();
        player_.Poll();
        for (const std::int32_t time : times) {
            player_.SetPosition(time);
            editor_.mmEditing_AddClick();
        }
        editor_.mmSong_StopClick();
        Settle();
    }

    void Choose(const char* item)
    {
        auto* action = window_.findChild<QAction*>(QString::fromLatin1(item));
        if (action == nullptr || !action->isEnabled())
            Fail(QStringLiteral("the menus have no %1").arg(QLatin1String(item)));
        action->trigger();
        Settle();
    }

    QWidget& Widget(const char* name)
    {
        auto* widget = window_.findChild<QWidget*>(QString::fromLatin1(name));
        if (widget == nullptr || !widget->isVisible())
            Fail(QStringLiteral("the window shows no %1").arg(QLatin1String(name)));
        return *widget;
    }

    QImage Whole()
    {
        return window_.grab().toImage().scaledToWidth(kWindowWidth, Qt::SmoothTransformation);
    }

    /// The part of the window that holds the controls.
    QImage Part(std::initializer_list<const char*> names, QMargins around = kAround)
    {
        QRect place;
        for (const char* name : names) {
            QWidget& widget = Widget(name);
            place |= QRect(widget.mapTo(&window_, QPoint(0, 0)), widget.size());
        }
        return window_.grab(place.marginsAdded(around) & window_.rect()).toImage();
    }

 private:
    QTemporaryDir cache_;
    sound::PeakReader peaks_{cache_.path().toStdString()};
    support::HandPlayer player_;
    NoPrompts prompts_;
    editor::Editor editor_{player_, prompts_};
    ui::frmFountain window_{editor_};
};

void DrawWindow(const Album& album, Desk& desk)
{
    desk.Editor().MoveTo(kMoment);
    desk.Settle();
    album.Add("window", desk.Whole());
    album.Add("song", desk.Part({"lblTime", "fraSong"}, {6, 0, 6, 0}));
    album.Add("editing", desk.Part({"fraEditing"}, {6, 0, 6, 0}));
    album.Add("time", desk.Part({"fraTime"}, {6, 0, 6, 0}));
    album.Add("strip", desk.Part({"timeStrip"}, {}));
    album.Add("marks", desk.Part({"lblMarks", "lstMarks"}, {4, 2, 4, 2}));
    desk.Choose("mnuDisplayAction_5");
    album.Add("codes", desk.Part({"lblABCodes"}, {4, 0, 4, 0}));
    desk.Choose("mnuDisplayAction_5");
    desk.Choose("mnuDisplayAction_0");
    album.Add("legends", desk.Part({"fraLegends"}, {}));
    desk.Choose("mnuDisplayAction_0");
    desk.Choose("mnuDisplayAction_8");
    album.Add("script", desk.Part({"scriptView"}, {8, 2, 0, 0}));
    desk.Choose("mnuDisplayAction_8");
}

// Where the manual was made is nobody's business: the panel stands in a home of nobody.
void DrawFilePanel(const Album& album, Desk& desk)
{
    desk.Choose("mnuFileAction_1");
    auto* volumes = qobject_cast<QComboBox*>(&desk.Widget("drvFileSelect"));
    auto* folder = qobject_cast<QLabel*>(&desk.Widget("lblFolder"));
    if (volumes == nullptr || folder == nullptr)
        Fail(QStringLiteral("the file selection panel is not what it was"));
    volumes->clear();
    volumes->addItem(QStringLiteral("Home (/home/anna)"));
    folder->setText(QStringLiteral("/home/anna/shows"));
    album.Add("files",
              desk.Part({"fraFileSelect"}, {}).scaledToWidth(kPageWidth, Qt::SmoothTransformation));
    desk.Editor().HideFilePanel();
    desk.Settle();
}

void DrawDialogs(const Album& album, Desk& desk)
{
    desk.Editor().OpenShiftPanel();
    desk.Editor().updnShiftTime_Press(2, 1);
    desk.Settle();
    album.Add("shift", desk.Part({"fraShift"}, {}));
    desk.Editor().cmdShift_Click(1);
    desk.Settle();

    ui::PrintPreview preview(desk.Editor().Choreography(), nullptr);
    preview.setAttribute(Qt::WA_DeleteOnClose, false);
    preview.setAttribute(Qt::WA_DontShowOnScreen);
    preview.resize(kPageWidth, kPageWidth);
    preview.show();
    QApplication::processEvents();
    album.Add("print", preview.grab().toImage());
}

void DrawPanel(const Album& album, Desk& desk)
{
    desk.Editor().MoveTo(kMoment);
    desk.Settle();
    album.Add("panel_water",
              desk.Part({"lblErase_1", "lblBypass_1", "updnMultiValve_1"}, kWithHeading));
    album.Add("panel_single",
              desk.Part({"lblErase_7", "updnBazookas", "lblDisplay", "lblOperator"}, kWithHeading));
    album.Add("panel_sweeps", desk.Part({"lblErase_15", "lblMotion_5", "updnSweepPulsate_1"}));
    album.Add("panel_lights",
              desk.Part({"lblLight_0", "lblErase_19", "lblLight_46"}, {6, 6, 6, 2}));
    album.Add(
        "panel_effects",
        desk.Part({"lblErase_16", "updnRotateTime_1", "lblErase_0", "lblReset_2"}, {6, 0, 6, 4}));
    desk.Editor().MoveTo(kQuietMoment);
    desk.Editor().SetSpinner("updnRings", 4, 2);
    desk.Settle();
    album.Add("pending", desk.Part({"lblStored", "lblPending"}, {12, 3, 0, 3}));
    desk.Editor().lblReset_Click(1);
    desk.Editor().MoveTo(kMoment);
    desk.Settle();
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        Fail(QStringLiteral("expected the folder of the samples and one for the pictures"));
    QApplication application(argc, argv);
    ui::SetUpQt();
    const Album album(QDir(QString::fromLocal8Bit(argv[2])).absolutePath());
    // Shows are named by where they are, and the manual shall not tell where it was made.
    if (!QDir::setCurrent(QString::fromLocal8Bit(argv[1])))
        Fail(QStringLiteral("there is no folder of samples"));
    DrawDevices(album);
    Desk desk;
    desk.AwaitPeaks();
    desk.SetMarks({19'800, 35'900, 50'200, 62'900, 73'900});
    DrawWindow(album, desk);
    DrawPanel(album, desk);
    DrawFilePanel(album, desk);
    DrawDialogs(album, desk);
    return 0;
}
