#pragma once

#include "app/syncedlistmodel.h"

#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

class Settings;

/// The profile list in the user's order (`AppSettings.profiles`), with the current
/// profile as `currentIndex`, for the profile picker and the profile list screen.
///
/// Adding and renaming save at once. Deleting and moving happen on the event loop, after
/// the list view has finished the edit that asked for them, so their rows change a moment
/// later. The first profile can be neither deleted nor moved, and nothing can be moved
/// before it: such requests change nothing.
/// The base is named in full because QML tools match base classes by their full names.
class ProfileListModel : public kestrum::SyncedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the profile list is AppSettings.profiles")
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)

public:
    enum Role {
        IdRole = Qt::UserRole + 1, ///< the profile id, fixed once made
        NameRole,                  ///< the name the user gave it; writable
        IsDefaultRole,             ///< the built-in first profile ("default")
        IsCurrentRole,             ///< the profile the meter uses
    };
    Q_ENUM(Role)

    explicit ProfileListModel(Settings& settings, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The row of the current profile; writing makes that row's profile current.
    int currentIndex() const;
    void setCurrentIndex(int row);

    /// Appends an "Untitled" profile with a new id.
    Q_INVOKABLE void add();
    /// Renames the profile at `row`; false when there is none.
    Q_INVOKABLE bool rename(int row, const QString& name);
    /// Deletes the profile at `row`, on the event loop.
    Q_INVOKABLE void remove(int row);
    /// Moves the profile at `from` to stand before the profile now at `to` (a row counted
    /// before the move, as while dragging; `count` moves it to the end), on the event loop.
    Q_INVOKABLE void move(int from, int to);

signals:
    void currentIndexChanged();

private:
    struct Row {
        QString id;
        QString name;
        bool isCurrent = false;
        friend bool operator==(const Row&, const Row&) = default;
    };
    void refresh();

    Settings& m_settings;
    QList<Row> m_rows;
};

} // namespace kestrum
