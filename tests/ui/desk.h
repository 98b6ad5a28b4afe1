#pragma once

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <fstream>

#include "document/control_file.h"
#include "document/journal.h"
#include "studio.h"
#include "ui/show_keeper.h"

namespace ui_test {

namespace fs = std::filesystem;

/// Where several editors work one after another, or at once.
class Folder {
 public:
    [[nodiscard]] fs::path Path(const char* name = "Gala.ctl") const
    {
        return fs::path(folder_.path().toStdString()) / name;
    }
    [[nodiscard]] fs::path Journals() const { return Path("recovery"); }
    void Write(const std::string& text, const char* name = "Gala.ctl") const
    {
        std::ofstream(Path(name), std::ios::binary) << text;
    }
    [[nodiscard]] QByteArray Bytes(const char* name = "Gala.ctl") const
    {
        QFile file(QString::fromStdString(Path(name).string()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] std::size_t JournalCount() const
    {
        std::error_code ignored;
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(Journals(), ignored), fs::directory_iterator{}));
    }

 private:
    QTemporaryDir folder_;
};

/// An editor with its window, looked after, that is gone without a word when it goes.
class Desk {
 public:
    explicit Desk(const Folder& folder) : journal(folder.Journals()) {}

    support::HandPlayer player;
    Answers answers;
    document::Journal journal;
    editor::Editor editor{player, answers};
    ui::frmFountain window{editor};
    ui::ShowKeeper keeper{editor, answers, window, journal};

    /// Opens a show at the start of the program.
    void Start(const Folder& folder, const fs::path& show)
    {
        editor.Form_Activate(show);
        editor.FinishStartUp();
        window.show();
        window.Refresh();
        keeper.Begin(folder.Journals());
    }
    void Edit(int level, int ring = 3)
    {
        QVERIFY(editor.SetSpinner("updnRings", ring, level));
        editor.mnuFile_Click();
        window.Refresh();
    }
    template <typename T>
    [[nodiscard]] T* Dialog()
    {
        for (T* dialog : window.findChildren<T*>())
            if (dialog->isVisible())
                return dialog;
        return nullptr;
    }
    [[nodiscard]] std::string Text() const { return ControlText(editor.Choreography()); }
};

inline void Click(QDialog* dialog, const char* button)
{
    auto* found = dialog->findChild<QPushButton*>(QString::fromLatin1(button));
    QVERIFY2(found != nullptr && found->isEnabled(), button);
    QTest::mouseClick(found, Qt::LeftButton);
}

[[nodiscard]] inline QString LabelOf(const QDialog* dialog, const char* label)
{
    return dialog->findChild<QLabel*>(QString::fromLatin1(label))->text();
}

[[nodiscard]] inline QStringList LinesOf(const QDialog* dialog)
{
    const auto* list = dialog->findChild<QListView*>(QStringLiteral("lstChanges"));
    QStringList lines;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        lines << list->model()->index(row, 0).data().toString();
    return lines;
}

}  // namespace ui_test
