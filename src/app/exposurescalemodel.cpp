#include "exposurescalemodel.h"

namespace kestrum {

int ExposureScaleModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ExposureScaleModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (Role(role)) {
    case DisplayRole:
        return row.display;
    case SignedDisplayRole:
        return row.signedDisplay;
    case ValueRole:
        return row.value;
    case StepRole:
        return row.step;
    case IdRole:
        return row.id;
    }
    return {};
}

QHash<int, QByteArray> ExposureScaleModel::roleNames() const
{
    return {{DisplayRole, "display"},
            {SignedDisplayRole, "signedDisplay"},
            {ValueRole, "value"},
            {StepRole, "step"},
            {IdRole, "entryId"}};
}

void ExposureScaleModel::setCurrentIndex(int index)
{
    if (!m_choose)
        return;
    m_choose(index);
    refresh();
}

void ExposureScaleModel::refresh()
{
    m_refresh();
}

void ExposureScaleModel::apply(const QList<Row>& rows, int currentIndex)
{
    sync(m_rows, rows, [](const Row& row) { return row.id; });
    if (currentIndex != m_currentIndex) {
        m_currentIndex = currentIndex;
        emit currentIndexChanged();
    }
}

} // namespace kestrum
