#include "zoomoptionmodel.h"

#include "camera/anycameracontroller.h"

namespace kestrum {

ZoomOptionModel::ZoomOptionModel(AnyCameraController& camera, QObject* parent)
    : SyncedListModel(parent)
    , m_camera(camera)
{
    refresh();
}

int ZoomOptionModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_options.size());
}

QVariant ZoomOptionModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ZoomOption& option = m_options[index.row()];
    switch (Role(role)) {
    case FactorRole:
        return option.factor;
    case TitleRole:
        return option.title;
    case ActiveTitleRole:
        return option.activeTitle;
    }
    return {};
}

QHash<int, QByteArray> ZoomOptionModel::roleNames() const
{
    return {{FactorRole, "factor"}, {TitleRole, "title"}, {ActiveTitleRole, "activeTitle"}};
}

void ZoomOptionModel::setCurrentIndex(int index)
{
    if (index < 0 || index >= m_options.size())
        return;
    m_camera.setCurrentZoomOption(m_options[index]);
    refresh();
}

void ZoomOptionModel::refresh()
{
    sync(m_options, m_camera.zoomOptions(), [](const ZoomOption& option) { return option.id(); });
    const std::optional<ZoomOption> current = m_camera.currentZoomOption();
    const int index = current ? int(m_options.indexOf(*current)) : -1;
    if (index != m_currentIndex) {
        m_currentIndex = index;
        emit currentIndexChanged();
    }
}

} // namespace kestrum
