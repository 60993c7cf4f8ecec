#include "profilelistmodel.h"

#include "settings/settings.h"

namespace kestrum {

ProfileListModel::ProfileListModel(Settings& settings, QObject* parent)
    : SyncedListModel(parent)
    , m_settings(settings)
{
    connect(&settings, &Settings::profilesChanged, this, &ProfileListModel::refresh);
    connect(&settings, &Settings::currentProfileIDChanged, this, &ProfileListModel::refresh);
    refresh();
}

void ProfileListModel::refresh()
{
    const int currentBefore = currentIndex();
    const QString currentID = m_settings.currentProfileID();
    QList<Row> rows;
    for (const Profile& profile : m_settings.profiles())
        rows.append({profile.id, profile.name, profile.id == currentID});
    sync(m_rows, rows, [](const Row& row) { return row.id; });
    if (currentIndex() != currentBefore)
        emit currentIndexChanged();
}

int ProfileListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ProfileListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (Role(role)) {
    case IdRole:
        return row.id;
    case NameRole:
        return row.name;
    case IsDefaultRole:
        return row.id == Profile::defaultProfile().id;
    case IsCurrentRole:
        return row.isCurrent;
    }
    return {};
}

bool ProfileListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != NameRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    return rename(index.row(), value.toString());
}

Qt::ItemFlags ProfileListModel::flags(const QModelIndex& index) const
{
    return SyncedListModel::flags(index) | Qt::ItemIsEditable;
}

QHash<int, QByteArray> ProfileListModel::roleNames() const
{
    return {{IdRole, "profileId"},
            {NameRole, "name"},
            {IsDefaultRole, "isDefault"},
            {IsCurrentRole, "isCurrent"}};
}

int ProfileListModel::currentIndex() const
{
    const auto found =
        std::find_if(m_rows.cbegin(), m_rows.cend(), [](const Row& row) { return row.isCurrent; });
    return found == m_rows.cend() ? -1 : int(found - m_rows.cbegin());
}

void ProfileListModel::setCurrentIndex(int row)
{
    if (row >= 0 && row < m_rows.size())
        m_settings.switchProfile(m_rows[row].id);
}

void ProfileListModel::add()
{
    m_settings.addProfile();
}

bool ProfileListModel::rename(int row, const QString& name)
{
    return row >= 0 && row < m_rows.size() && m_settings.renameProfile(m_rows[row].id, name);
}

void ProfileListModel::remove(int row)
{
    m_settings.deleteProfiles({row});
}

void ProfileListModel::move(int from, int to)
{
    m_settings.moveProfiles({from}, to);
}

} // namespace kestrum
