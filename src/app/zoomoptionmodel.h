#pragma once

#include "app/syncedlistmodel.h"
#include "camera/zoomoption.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kestrum {

class AnyCameraController;

/// The camera's zoom presets, in the order the zoom picker shows them, with the
/// selection: `currentIndex` is the row of the camera's current option (−1 when it has
/// none among them), and writing it makes that row's option current.
/// The base is named in full because QML tools match base classes by their full names.
class ZoomOptionModel : public kestrum::SyncedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("zoom options are offered by CameraController")
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)

public:
    enum Role {
        FactorRole = Qt::UserRole + 1, ///< the device zoom factor, not the number shown
        TitleRole,                     ///< the label while not selected: "0.5", "1", "3"
        ActiveTitleRole,               ///< the label while selected: "0.5×"
    };
    Q_ENUM(Role)

    explicit ZoomOptionModel(AnyCameraController& camera, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int currentIndex() const { return m_currentIndex; }
    void setCurrentIndex(int index);

    /// Reads the options and the current one again.
    void refresh();

signals:
    void currentIndexChanged();

private:
    AnyCameraController& m_camera;
    QList<ZoomOption> m_options;
    int m_currentIndex = -1;
};

} // namespace kestrum
