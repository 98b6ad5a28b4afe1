#include "ui/script_model.h"

#include <algorithm>
#include <utility>

#include "document/time_text.h"

namespace ui {
namespace {

constexpr std::int32_t kMostLinesRead = 50;

}  // namespace

void ScriptModel::ShowChoreography(const document::Choreography& choreography)
{
    Apply(list_.Prepare(choreography));
}

void ScriptModel::CheckShow(std::int32_t musicLength)
{
    Apply(list_.PrepareFaults(musicLength));
}

void ScriptModel::SetFilter(const QString& text)
{
    beginResetModel();
    list_.SetFilter(text.toStdString());
    endResetModel();
}

void ScriptModel::Apply(timeline::ScriptList::Update update)
{
    const timeline::ListChange rows = update.rows;
    const int last = rows.first + std::max(rows.removed, rows.inserted) - 1;
    if (rows.removed == rows.inserted) {
        list_.Apply(std::move(update));
        if (last >= rows.first)
            emit dataChanged(index(rows.first), index(last));
    } else if (rows.removed == 0) {
        beginInsertRows({}, rows.first, last);
        list_.Apply(std::move(update));
        endInsertRows();
    } else if (rows.inserted == 0) {
        beginRemoveRows({}, rows.first, last);
        list_.Apply(std::move(update));
        endRemoveRows();
    } else {
        // Several times at once, such as another show: no signal tells both in one.
        beginResetModel();
        list_.Apply(std::move(update));
        endResetModel();
    }
}

int ScriptModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : list_.RowCount();
}

QVariant ScriptModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::AccessibleTextRole)
        return WholeText(index.row());
    if (role == Qt::DisplayRole)
        return QString::fromStdString(document::TimeText(list_.TimeOf(index.row())));
    return {};
}

QString ScriptModel::WholeText(int row) const
{
    using Kind = timeline::ScriptLine::Kind;
    QString text = QString::fromStdString(document::TimeText(list_.TimeOf(row)));
    QString separator = QStringLiteral(": ");
    for (const timeline::ScriptLine& line : list_.Lines(row, 0, kMostLinesRead)) {
        text += std::exchange(separator, QStringLiteral(". "));
        if (line.kind != Kind::Command)
            text += line.kind == Kind::Problem ? QStringLiteral("Problem: ")
                                               : QStringLiteral("Warning: ");
        text += QString::fromStdString(line.text);
    }
    return text;
}

}  // namespace ui
