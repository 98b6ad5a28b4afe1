#pragma once

#include <QKeySequence>
#include <QWidget>
#include <memory>

#include "ui/help_browser.h"
#include "ui/help_library.h"
#include "ui/help_search.h"

class QAction;
class QLineEdit;
class QSplitter;
class QTabWidget;
class QToolBar;

namespace ui {

/// The window that shows the manual.
class HelpViewer final : public QWidget {
    Q_OBJECT

 public:
    explicit HelpViewer(std::unique_ptr<HelpLibrary> library);
    ~HelpViewer() override;
    Q_DISABLE_COPY_MOVE(HelpViewer)

    /// Brings the window to the front with its contents and the first page.
    void ShowContents();
    /// Brings the window to the front with its search page.
    void ShowSearch();

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void BuildTools();
    void BuildGuide();
    void BuildIndex();
    void BuildFindBar();
    QAction* AddTool(const char* name, const char* caption, const char* toolTip,
                     const QList<QKeySequence>& keys);
    void Open(const QUrl& page);
    void ShowPlace(const QUrl& page);
    void OpenFindBar();
    void FindInPage(QTextDocument::FindFlags flags, bool again);
    void BringToFront();

    std::unique_ptr<HelpLibrary> library_;
    QToolBar* tools_ = nullptr;
    QSplitter* parts_ = nullptr;
    QTabWidget* guide_ = nullptr;
    HelpBrowser* browser_ = nullptr;
    HelpSearch* search_ = nullptr;
    QWidget* findBar_ = nullptr;
    QLineEdit* txtFind_ = nullptr;
};

}  // namespace ui
