#pragma once

#include "app/syncedlistmodel.h"

#include <QUrl>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

class AppIcon;
class WindowIcon;

/// The app icons on offer (`AppSettings.appIcons`, see AppIcons), for the icon picker,
/// with the one in use as `currentIndex`.
///
/// The icon in use is the one the launcher's entry names; any other name there reads as
/// Light. Choosing a row names its icon in the entry and gives it to the window; when the
/// entry cannot be written, nothing changes.
/// The base is named in full because QML tools match base classes by their full names.
class AppIconModel : public kestrum::SyncedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the app icons are AppSettings.appIcons")
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)

public:
    enum Role {
        NameRole = Qt::UserRole + 1, ///< the title shown and read out: "Light", "Dark"…
        PreviewSourceRole,           ///< the drawing, for an Image's `source`
        IsCurrentRole,               ///< the icon in use
    };
    Q_ENUM(Role)

    /// `launcher` and `window` must outlive the model.
    AppIconModel(AppIcon& launcher, WindowIcon& window, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int currentIndex() const;
    void setCurrentIndex(int row);

signals:
    void currentIndexChanged();

private:
    struct Row {
        QString name;
        QUrl previewSource;
        bool isCurrent = false;
        friend bool operator==(const Row&, const Row&) = default;
    };
    void refresh();

    AppIcon& m_launcher;
    WindowIcon& m_window;
    QList<Row> m_rows;
};

} // namespace kestrum
