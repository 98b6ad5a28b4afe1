#pragma once

#include <QAbstractListModel>

#include "timeline/script_list.h"

namespace ui {

/// The script as an item model: a row for each time that the filter lets through. Texts are made
/// when they are asked for.
class ScriptModel final : public QAbstractListModel {
    Q_OBJECT

 public:
    using QAbstractListModel::QAbstractListModel;

    /// Compares with what is shown and changes the rows that differ; all are new when some are
    /// changed and others come or go.
    void ShowChoreography(const document::Choreography& choreography);
    /// Looks for what is wrong with the whole show. `musicLength` in ms, 0 when it is not known.
    void CheckShow(std::int32_t musicLength);
    void SetFilter(const QString& text);

    [[nodiscard]] const timeline::ScriptList& List() const { return list_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    /// The time; for screen readers all of its lines.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
    void Apply(timeline::ScriptList::Update update);
    [[nodiscard]] QString WholeText(int row) const;

    timeline::ScriptList list_;
};

}  // namespace ui
