#pragma once

#include <QTemporaryDir>
#include <QtTest>
#include <fstream>
#include <string>

#include "editor/editor.h"
#include "support/hand_player.h"
#include "ui/application.h"
#include "ui/frm_fountain.h"

namespace ui_test {

/// Rings at 1 s, a moving sweep at 4 s, more rings at 10 s; eleven commands at 12 s.
inline constexpr const char* kShow =
    "ct0-381\r\n"
    "00:00.0099-000\r\n"
    "00:01.0001-018 017-001\r\n"
    "00:04.0006-020 033-097\r\n"
    "00:10.0002-018\r\n"
    "00:12.0099-000 001-017 002-017 003-017 004-017 005-017 006-017 007-018 017-001 018-002 "
    "019-004\r\n";

/// Answers every question alike, and remembers them as "title: text".
class Answers final : public editor::Prompts {
 public:
    bool yes = true;
    QStringList asked;

    void Warn(const std::string&) override {}
    [[nodiscard]] bool Ask(const std::string& text, const std::string& title, editor::Icon) override
    {
        asked << QString::fromStdString(title + ": " + text);
        return yes;
    }
};

enum class Music { None, Open };

/// A window over an editor whose music is played by hand.
class Studio {
 public:
    support::HandPlayer player;
    Answers answers;
    editor::Editor editor{player, answers};
    ui::frmFountain window{editor};

    void Open(const std::string& show, Music music)
    {
        const std::string base = folder_.filePath(QStringLiteral("Gala")).toStdString();
        std::ofstream(base + ".ctl", std::ios::binary) << show;
        if (music == Music::Open)
            std::ofstream(base + ".mp3") << "music";
        editor.OpenShow(base);
        window.Refresh();
    }

    void Show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    template <typename T = QWidget>
    T* Find(const char* name)
    {
        T* found = window.findChild<T*>(QString::fromLatin1(name));
        if (found == nullptr)
            qFatal("there is no control %s", name);
        return found;
    }

    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    void Press(Qt::Key key)
    {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : &window, key);
    }
    /// Presses a key in a control, as often as told.
    void PressIn(const char* name, Qt::Key key, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(Find(name), key);
    }
    void Choose(const char* action) { Find<QAction>(action)->trigger(); }

    /// What the show's file holds now.
    [[nodiscard]] QString Saved() const
    {
        QFile file(folder_.filePath(QStringLiteral("Gala.ctl")));
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
    }

    [[nodiscard]] QString Text(const char* label) { return Find<QLabel>(label)->text(); }

    /// Lets what was pressed take effect and the music, where it plays, go on.
    void Play(std::int32_t duration)
    {
        player.Poll();
        player.Advance(duration);
        window.Refresh();
    }

    /// The timers of the window that wake the program up.
    [[nodiscard]] qsizetype RunningTimers()
    {
        qsizetype running = 0;
        for (QObject* object : window.findChildren<QObject*>())
            running += QAbstractEventDispatcher::instance()->registeredTimers(object).size();
        return running;
    }

 private:
    QTemporaryDir folder_;
};

}  // namespace ui_test
