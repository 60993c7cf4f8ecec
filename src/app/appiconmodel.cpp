#include "appiconmodel.h"

#include "platform/desktop/appicon.h"
#include "platform/desktop/windowicon.h"
#include "settings/appicons.h"

namespace kestrum {

AppIconModel::AppIconModel(AppIcon& launcher, WindowIcon& window, QObject* parent)
    : SyncedListModel(parent)
    , m_launcher(launcher)
    , m_window(window)
{
    refresh();
}

void AppIconModel::refresh()
{
    const int currentBefore = currentIndex();
    const int current = AppIcons::rowOf(m_launcher.alternateIconName());
    QList<Row> rows;
    for (int row = 0; row < AppIcons::count(); ++row) {
        rows.append({AppIcons::title(row), QUrl(QStringLiteral("qrc") + AppIcons::picturePath(row)),
                     row == current});
    }
    sync(m_rows, rows, [](const Row& row) { return row.previewSource; });
    if (currentIndex() != currentBefore)
        emit currentIndexChanged();
}

int AppIconModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant AppIconModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (Role(role)) {
    case NameRole:
        return row.name;
    case PreviewSourceRole:
        return row.previewSource;
    case IsCurrentRole:
        return row.isCurrent;
    }
    return {};
}

QHash<int, QByteArray> AppIconModel::roleNames() const
{
    return {{NameRole, "name"}, {PreviewSourceRole, "previewSource"}, {IsCurrentRole, "isCurrent"}};
}

int AppIconModel::currentIndex() const
{
    const auto found =
        std::find_if(m_rows.cbegin(), m_rows.cend(), [](const Row& row) { return row.isCurrent; });
    return found == m_rows.cend() ? -1 : int(found - m_rows.cbegin());
}

void AppIconModel::setCurrentIndex(int row)
{
    const std::optional<QString> name = AppIcons::alternateName(row);
    if (row == currentIndex() || !name || !m_launcher.setAlternateIconName(*name))
        return;
    m_window.show(AppIcons::picturePath(row));
    refresh();
}

} // namespace kestrum
