#include "userdesktopentry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>
#include <QStandardPaths>

namespace kestrum {

namespace {

const QString kAppId = QStringLiteral(KESTRUM_APP_ID);
const QString kMainGroup = QStringLiteral("[Desktop Entry]");
const QString kInstalledEntry = QStringLiteral(":/kestrum/desktop/installed.desktop");

// A value of type string or localestring: backslash escapes for what a line cannot hold.
QString escapedValue(const QString& value)
{
    QString escaped;
    for (const QChar c : value) {
        switch (c.unicode()) {
        case '\\':
            escaped += QLatin1String("\\\\");
            break;
        case '\n':
            escaped += QLatin1String("\\n");
            break;
        case '\t':
            escaped += QLatin1String("\\t");
            break;
        case '\r':
            escaped += QLatin1String("\\r");
            break;
        default:
            escaped += c;
        }
    }
    if (escaped.startsWith(u' '))
        escaped.replace(0, 1, QLatin1String("\\s"));
    return escaped;
}

// One argument of an Exec= command line: quoted when it holds a character the line
// reserves, with `%` doubled so that it is not read as a field code.
QString execArgument(const QString& argument)
{
    static const QString kReserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    const bool quote =
        argument.isEmpty() || std::any_of(argument.cbegin(), argument.cend(),
                                          [](QChar c) { return kReserved.contains(c); });
    QString text;
    for (const QChar c : argument) {
        if (quote && QStringLiteral("\"`$\\").contains(c))
            text += u'\\';
        text += c;
        if (c == u'%')
            text += u'%';
    }
    return quote ? u'"' + text + u'"' : text;
}

QString execLine(const QString& program, const QStringList& arguments)
{
    QStringList words{execArgument(program)};
    for (const QString& argument : arguments)
        words.append(execArgument(argument));
    return QStringLiteral("Exec=") + escapedValue(words.join(u' '));
}

// Action ids may hold letters, digits and '-' only: the type and the information's
// values, joined by '-', made unique in the list.
QStringList actionIds(const QList<QuickAction>& actions)
{
    static const QRegularExpression kOther(QStringLiteral("[^A-Za-z0-9-]+"));
    QStringList ids;
    QSet<QString> taken;
    for (const QuickAction& action : actions) {
        QStringList parts{action.type};
        for (const QVariant& value : action.userInfo)
            parts.append(value.toString());
        QString id = parts.join(u'-').replace(kOther, QStringLiteral("-"));
        if (id.isEmpty() || taken.contains(id)) {
            const QString stem = id.isEmpty() ? QStringLiteral("action") : id;
            int n = 2;
            while (taken.contains(id = stem + u'-' + QString::number(n)))
                ++n;
        }
        taken.insert(id);
        ids.append(id);
    }
    return ids;
}

} // namespace

UserDesktopEntry::UserDesktopEntry(QString program, QString filePath)
    : m_program(std::move(program))
    , m_filePath(std::move(filePath))
{
    // The alternate icon is kept in the entry itself: it is what the launcher shows.
    QFile existing(m_filePath);
    if (!existing.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    const QString iconPrefix = QStringLiteral("Icon=") + kAppId + u'-';
    bool inMainGroup = false;
    while (!existing.atEnd()) {
        const QString line = QString::fromUtf8(existing.readLine()).trimmed();
        if (line.startsWith(u'['))
            inMainGroup = line == kMainGroup;
        else if (inMainGroup && line.startsWith(iconPrefix))
            m_alternateIconName = line.mid(iconPrefix.size());
    }
}

QString UserDesktopEntry::defaultFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/applications/") + kAppId + QStringLiteral(".desktop");
}

QString UserDesktopEntry::installedText()
{
    QFile entry(kInstalledEntry);
    if (!entry.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("the installed desktop entry is not compiled into the app");
    return QString::fromUtf8(entry.readAll());
}

QString UserDesktopEntry::iconName(const QString& alternateName)
{
    return alternateName.isEmpty() ? kAppId : kAppId + u'-' + alternateName;
}

QString UserDesktopEntry::text() const
{
    const QStringList ids = actionIds(m_actions);
    QStringList lines;
    bool inMainGroup = false;
    const auto closeMainGroup = [&] {
        if (inMainGroup && !ids.isEmpty())
            lines.append(QStringLiteral("Actions=") + ids.join(u';') + u';');
        inMainGroup = false;
    };
    for (const QString& line : installedText().split(u'\n')) {
        if (line.startsWith(u'[')) {
            closeMainGroup();
            inMainGroup = line.trimmed() == kMainGroup;
        } else if (inMainGroup && line.startsWith(QLatin1String("Exec="))) {
            lines.append(execLine(m_program, {}));
            continue;
        } else if (inMainGroup && line.startsWith(QLatin1String("Icon="))) {
            lines.append(QStringLiteral("Icon=") + iconName(m_alternateIconName));
            continue;
        } else if (inMainGroup && line.startsWith(QLatin1String("Actions="))) {
            continue;
        }
        if (inMainGroup && line.isEmpty())
            continue; // the group's end is where Actions= goes
        lines.append(line);
    }
    closeMainGroup();
    for (qsizetype i = 0; i < m_actions.size(); ++i) {
        lines.append(QString());
        lines.append(QStringLiteral("[Desktop Action ") + ids.at(i) + u']');
        lines.append(QStringLiteral("Name=") + escapedValue(m_actions.at(i).title));
        lines.append(execLine(m_program, m_actions.at(i).toArguments()));
    }
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines.join(u'\n') + u'\n';
}

bool UserDesktopEntry::setQuickActions(const QList<QuickAction>& actions)
{
    const QList<QuickAction> previous = std::exchange(m_actions, actions);
    if (write())
        return true;
    m_actions = previous;
    return false;
}

bool UserDesktopEntry::setAlternateIconName(const QString& name)
{
    static const QRegularExpression kIconName(
        QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9-]*")));
    if (!kIconName.match(name).hasMatch())
        return false;
    const QString previous = std::exchange(m_alternateIconName, name);
    if (write())
        return true;
    m_alternateIconName = previous;
    return false;
}

bool UserDesktopEntry::write() const
{
    if (!QDir().mkpath(QFileInfo(m_filePath).absolutePath())) {
        qWarning("could not make the folder of %s", qPrintable(m_filePath));
        return false;
    }
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(text().toUtf8()) < 0 ||
        !file.commit()) {
        qWarning("could not write %s: %s", qPrintable(m_filePath), qPrintable(file.errorString()));
        return false;
    }
    return true;
}

} // namespace kestrum
