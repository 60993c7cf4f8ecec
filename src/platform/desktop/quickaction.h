#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace kestrum {

/// A launcher shortcut into the app (a home-screen quick action): its type, the title
/// the launcher shows, and string-keyed information for the app. On Linux each is a
/// `[Desktop Action …]` of the app's desktop entry, whose command line carries the type
/// and the information back into the app.
struct QuickAction {
    QString type;
    QString title;
    QVariantMap userInfo; ///< string values only

    /// The command-line arguments that start the app with this action:
    /// `--quick-action=TYPE` and one `--quick-action-info=KEY=VALUE` for each entry.
    QStringList toArguments() const;
    /// The action in `arguments` (a program's whole argument list); nothing when it names
    /// none. Information entries without `=` are ignored.
    static std::optional<QuickAction> fromArguments(const QStringList& arguments);

    friend bool operator==(const QuickAction&, const QuickAction&) = default;
};

/// Where the launcher reads the app's quick actions from.
class QuickActionShortcuts {
public:
    virtual ~QuickActionShortcuts() = default;

    /// Replaces the app's quick actions with `actions`, in this order. Returns false when
    /// they could not be written (the previous ones then stay).
    virtual bool setQuickActions(const QList<QuickAction>& actions) = 0;
};

} // namespace kestrum
