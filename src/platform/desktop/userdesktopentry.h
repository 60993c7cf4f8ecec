#pragma once

#include "appicon.h"
#include "quickaction.h"

#include <QString>

namespace kestrum {

/// The user's own copy of the app's desktop entry, `<app id>.desktop` in
/// `$XDG_DATA_HOME/applications` (`~/.local/share/applications` by default), which
/// launchers read instead of the installed one. It is the installed entry, compiled into
/// the app, with three changes: `Exec=` starts this very program, `Icon=` names the
/// alternate icon in use, and each quick action is a `[Desktop Action …]` listed in
/// `Actions=`, whose `Exec=` carries the action's arguments.
///
/// The file is written whole and atomically whenever the actions or the icon change;
/// nothing else in the folder is touched. The icon is read back from the file at
/// construction; the actions are those last set by this process (none before the first).
class UserDesktopEntry final : public QuickActionShortcuts, public AppIcon {
public:
    /// `program` is what `Exec=` starts (the running program's absolute path);
    /// `filePath` the entry to write.
    UserDesktopEntry(QString program, QString filePath = defaultFilePath());

    /// `<app id>.desktop` in the user's applications folder.
    static QString defaultFilePath();
    /// The installed entry, as compiled into the app.
    static QString installedText();
    /// The icon name for the alternate icon `name`, `<app id>-<name>`; the app id alone
    /// for the app's own icon (an empty name).
    static QString iconName(const QString& alternateName);

    QString filePath() const { return m_filePath; }
    /// The whole entry as it is written.
    QString text() const;

    bool setQuickActions(const QList<QuickAction>& actions) override;
    QString alternateIconName() const override { return m_alternateIconName; }
    bool setAlternateIconName(const QString& name) override;

private:
    bool write() const;

    QString m_program;
    QString m_filePath;
    QList<QuickAction> m_actions;
    QString m_alternateIconName;
};

} // namespace kestrum
