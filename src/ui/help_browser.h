#pragma once

#include <QHelpEngine>
#include <QTextBrowser>
#include <QTimer>

namespace ui {

/// Shows pages of the manual; follows its links. Pictures are never wider than the page.
class HelpBrowser final : public QTextBrowser {
    Q_OBJECT

 public:
    /// `engine` outlives the browser.
    HelpBrowser(QHelpEngineCore& engine, QWidget* parent);

    QVariant loadResource(int type, const QUrl& name) override;

    /// In steps from the size of the start; far steps are ignored.
    void Zoom(int steps);
    void ResetZoom();

    /// Selects the next place with `text`, from the start again behind the last one. With
    /// `again` false the present place counts too. False when there is none.
    bool Find(const QString& text, QTextDocument::FindFlags flags, bool again);

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    [[nodiscard]] int RoomForPictures() const;
    [[nodiscard]] QImage Fitted(const QImage& picture) const;
    void FitPictures();

    QHelpEngineCore& engine_;
    int zoom_ = 0;
    int fittedTo_ = 0;  // pixels
    QTimer fitSoon_;    // while a window is drawn larger, its pictures wait
};

}  // namespace ui
