#pragma once

#include <QDialog>

#include "document/choreography.h"
#include "ui/diff_view.h"

namespace ui {

/// Tells that the control file was changed by others while it was open here. Rejecting it keeps
/// what is open.
class dlgChanged final : public QDialog {
    Q_OBJECT

 public:
    /// `mine` is what is open. When the file is `gone` it can only be kept.
    dlgChanged(const document::Choreography& mine, bool gone, QWidget* window);

 signals:
    void ReloadChosen();

 private:
    void ToggleDifference(bool shown);

    document::Choreography mine_;
    QSize small_;
    DiffView* difference_ = nullptr;
};

}  // namespace ui
