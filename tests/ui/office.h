#pragma once

#include <QAbstractItemModel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "studio.h"
#include "ui/settings_store.h"

namespace ui_test {

inline constexpr const char* kOther = "ct0-381\r\n00:02.0003-018\r\n";

/// Answers every message box that opens, and remembers what they said.
class Clerk final : public QObject {
 public:
    Clerk()
    {
        look_.setInterval(1);
        connect(&look_, &QTimer::timeout, this, [this] { Look(); });
        look_.start();
    }

    QMessageBox::StandardButton answer = QMessageBox::No;
    QStringList said;
    QList<QMessageBox::Icon> icons;
    QStringList pending;  ///< what the window said behind them of what is pending

 private:
    void Look()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        said << box->text().replace(u'\n', u' ');
        icons << box->icon();
        const auto* label = box->parentWidget() == nullptr
                                ? nullptr
                                : box->parentWidget()->findChild<QLabel*>("lblPending");
        pending << (label == nullptr ? QString() : label->text());
        if (box->standardButtons().testFlag(QMessageBox::Ok))
            box->button(QMessageBox::Ok)->click();
        else if (box->defaultButton() == box->button(QMessageBox::No))
            box->button(answer)->click();
    }

    QTimer look_;
};

/// A window on a folder of shows: Gala with music, Other without; Sub and Empty are folders.
class Office {
 public:
    Office()
    {
        folder.mkdir("Sub.d");
        folder.mkdir("Empty");
        Write("Gala.ctl", ui_test::kShow);
        Write("Gala.mp3", "music");
        Write("Other.ctl", kOther);
        Write("Sub.d/Inner.ctl", kOther);
        prompts.SetWindow(&window);
        window.UseSettings(store);
        editor.Form_Activate(Path("Gala").toStdString());
        editor.OpenStartMusic();
        editor.FinishStartUp();
        window.resize(1024, 768);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QString Path(const QString& name) const { return folder.filePath(name); }
    void Write(const QString& name, const QByteArray& text) const
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    [[nodiscard]] QByteArray Read(const QString& name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    template <typename T = QWidget>
    T* Find(const QString& name)
    {
        T* found = window.findChild<T*>(name);
        if (found == nullptr)
            qFatal("there is no control %s", qPrintable(name));
        return found;
    }
    QAction* Item(const char* name) { return Find<QAction>(QString::fromLatin1(name)); }
    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    /// The control that has the focus. Behind a message box the window comes back only if asked.
    QWidget* Focus()
    {
        if (QApplication::focusWidget() == nullptr) {
            window.activateWindow();
            QCoreApplication::processEvents();
        }
        QWidget* focus = QApplication::focusWidget();
        return focus != nullptr ? focus : &window;
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(Focus(), key, modifiers);
    }
    void Type(const QString& text) { QTest::keyClicks(Focus(), text); }

    QStringList Names(const char* list)
    {
        const QAbstractItemModel* model = Find<QListView>(list)->model();
        QStringList names;
        for (int row = 0; row < model->rowCount(); ++row)
            names << model->index(row, 0).data().toString();
        return names;
    }
    void ClickName(const char* list, const QString& name, bool twice = false)
    {
        auto* view = Find<QListView>(list);
        const auto row = static_cast<int>(Names(list).indexOf(name));
        QVERIFY2(row >= 0, qPrintable(name));
        const QModelIndex index = view->model()->index(row, 0);
        view->scrollTo(index);
        const QPoint at = view->visualRect(index).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        if (twice)
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
    }

    [[nodiscard]] bool PanelOpen()
    {
        const auto* panel = window.findChild<QWidget*>("fraFileSelect");
        return panel != nullptr && panel->isVisible();
    }
    [[nodiscard]] QString Name() { return Find<QLineEdit>("txtFileSelect")->text(); }
    [[nodiscard]] QString Shown() const
    {
        return QString::fromStdString(editor.Choreography().fileName.filename().string());
    }
    [[nodiscard]] QString Song() const
    {
        return QString::fromStdString(player.FileName().filename().string());
    }
    /// An edit that is not written yet, at the time where one is.
    void Edit() { QTest::keyClick(Find("updnRings_4"), Qt::Key_Up); }

    QTemporaryDir home;
    QDir folder{home.path()};
    support::HandPlayer player;
    Clerk clerk;
    ui::MessagePrompts prompts;
    ui::QtSettingsStore store{home.filePath("settings.conf")};
    editor::Editor editor{player, prompts, &store};
    ui::frmFountain window{editor};
};

using Act = std::function<void(Office&)>;

}  // namespace ui_test
