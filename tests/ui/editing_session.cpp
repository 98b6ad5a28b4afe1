// The real program with a hand on its mouse: edits at random until it is killed. After every step
// it says on its standard output what leaving the time would store, and then that it is safe.
//
//     editing_session SHOW JOURNALS SEED STEPS
#include <QApplication>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>
#include <cstdio>
#include <cstdlib>

#include "document/control_text.h"
#include "document/journal_format.h"
#include "document/random_show.h"
#include "ui/application.h"

namespace {

using testing_support::Random;

/// Plays a step a round of the event loop.
class Player : public QObject {
 public:
    Player(ui::Application& program, Random random, int steps)
        : program_(program), random_(random), steps_(steps)
    {
        connect(&next_, &QTimer::timeout, this, &Player::Step);
    }

    void Begin() { next_.start(0); }

 private:
    void Step()
    {
        if (steps_-- == 0)
            return QApplication::exit(0);
        Do(random_.Below(10));
        Say();
    }

    void Do(int choice)
    {
        QWidget* window = &program_.Window();
        if (choice < 5)
            return PressArrow(window->findChildren<QAbstractSpinBox*>());
        if (choice < 7)
            return ClickLabel();
        if (choice == 7)
            return Press(Qt::Key_Z, Qt::ControlModifier);
        Press(random_.OneIn(2) ? Qt::Key_PageUp : Qt::Key_PageDown, Qt::NoModifier);
    }

    void PressArrow(const QList<QAbstractSpinBox*>& all)
    {
        QList<QAbstractSpinBox*> usable;
        for (QAbstractSpinBox* spinner : all)
            if (spinner->isVisible() && spinner->isEnabled())
                usable << spinner;
        if (usable.isEmpty())
            return;
        QTest::keyClick(usable[random_.Below(static_cast<int>(usable.size()))],
                        random_.OneIn(3) ? Qt::Key_Down : Qt::Key_Up);
    }

    void ClickLabel()
    {
        const QString name = QStringLiteral("lblLight_%1").arg(random_.Below(28));
        if (auto* label = program_.Window().findChild<QWidget*>(name))
            QTest::mouseClick(label, Qt::LeftButton);
    }

    void Press(Qt::Key key, Qt::KeyboardModifier modifier)
    {
        QTest::keyClick(program_.Window().findChild<QWidget*>(QStringLiteral("cmdFocus")), key,
                        modifier);
    }

    void Say()
    {
        std::printf("%s ", Fingerprint(program_.GetEditor()).c_str());
        std::fflush(stdout);
        program_.GetJournal().Flush();  // the time until the next click
        std::printf("safe\n");
        std::fflush(stdout);
    }

    static std::string Fingerprint(const editor::Editor& editor)
    {
        document::Choreography show = editor.Choreography();
        if (const auto pending = editor.PendingCommands()) {
            const std::int32_t time = editor.Timeline().CurrentTime();
            document::Patch patch;
            patch.changes.push_back({time, document::ListAt(show, time), std::nullopt});
            if (!pending->empty())
                patch.changes.front().after = *pending;
            patch.countsBefore = patch.countsAfter = document::CountsOf(show);
            if (!document::ApplyPatch(show, patch))
                return "broken";
        }
        return std::to_string(document::Checksum(document::ControlText(show)));
    }

    ui::Application& program_;
    Random random_;
    int steps_;
    QTimer next_;
};

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 5)
        return 2;
    QApplication qt(argc, argv);
    ui::SetUpQt();
    ui::StartOptions options;
    options.base = argv[1];
    options.recovery = argv[2];
    options.silent = true;
    ui::Application program(options);
    program.Start();
    // After the music was opened, which goes to the start of the show.
    Player player(program, Random(std::strtoull(argv[3], nullptr, 10)), std::atoi(argv[4]));
    QObject::connect(
        &program.Window(), &ui::frmFountain::FirstPainted, &player, [&player] { player.Begin(); },
        Qt::QueuedConnection);
    return QApplication::exec();
}
