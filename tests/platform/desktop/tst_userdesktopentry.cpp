#include "platform/desktop/userdesktopentry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;

namespace {

QString read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The lines of one group, `[Desktop Entry]` or `[Desktop Action ID]`.
QStringList group(const QString& text, const QString& header)
{
    const QStringList lines = text.split(u'\n');
    const qsizetype start = lines.indexOf(header);
    QStringList body;
    for (qsizetype i = start + 1; start >= 0 && i < lines.size() && !lines.at(i).startsWith(u'[');
         ++i) {
        if (!lines.at(i).isEmpty())
            body.append(lines.at(i));
    }
    return body;
}

// desktop-file-validate's complaints; empty when the entry is valid.
QString validation(const QString& path)
{
    QProcess validate;
    validate.start(QStringLiteral("desktop-file-validate"), {path});
    if (!validate.waitForFinished())
        return QStringLiteral("desktop-file-validate (desktop-file-utils) must be installed");
    return QString::fromUtf8(validate.readAllStandardOutput() + validate.readAllStandardError()) +
           (validate.exitCode() == 0
                ? QString()
                : QStringLiteral("exit status ") + QString::number(validate.exitCode()));
}

} // namespace

// The user's copy of the desktop entry: the installed entry with this program, the icon
// in use and one launcher action per quick action.
class UserDesktopEntryTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString entryPath() const { return m_dir.filePath("applications/org.kestrum.Kestrum.desktop"); }

private slots:
    void actionsAreWrittenInOrderAndValidate_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QList<QuickAction>>("actions");
        QTest::addColumn<QStringList>("mainLines"); // Exec=, Icon=, Actions= of the entry
        QTest::addColumn<QStringList>("lastAction");
        const auto action = [](QString title, QString id) {
            return QuickAction{"profile", std::move(title), {{"profileID", std::move(id)}}};
        };
        QTest::newRow("one per profile, in order")
            << "/usr/bin/kestrum"
            << QList{action("Default", "default"), action("Film", "5C1E-9A2B")}
            << QStringList{"Exec=/usr/bin/kestrum", "Icon=org.kestrum.Kestrum",
                           "Actions=profile-default;profile-5C1E-9A2B;"}
            << QStringList{"Name=Film", "Exec=/usr/bin/kestrum --quick-action=profile "
                                        "--quick-action-info=profileID=5C1E-9A2B"};
        QTest::newRow("names and ids that need escaping")
            << "/opt/my apps/kestrum" << QList{action("Tri-X\\400\nday", "a b%")}
            << QStringList{"Exec=\"/opt/my apps/kestrum\"", "Icon=org.kestrum.Kestrum",
                           "Actions=profile-a-b-;"}
            << QStringList{"Name=Tri-X\\\\400\\nday",
                           "Exec=\"/opt/my apps/kestrum\" --quick-action=profile "
                           "\"--quick-action-info=profileID=a b%%\""};
        QTest::newRow("the same id twice")
            << "/usr/bin/kestrum" << QList{action("A", "x"), action("B", "x")}
            << QStringList{"Exec=/usr/bin/kestrum", "Icon=org.kestrum.Kestrum",
                           "Actions=profile-x;profile-x-2;"}
            << QStringList{"Name=B", "Exec=/usr/bin/kestrum --quick-action=profile "
                                     "--quick-action-info=profileID=x"};
        QTest::newRow("no actions")
            << "/usr/bin/kestrum" << QList<QuickAction>()
            << QStringList{"Exec=/usr/bin/kestrum", "Icon=org.kestrum.Kestrum"} << QStringList();
    }

    void actionsAreWrittenInOrderAndValidate()
    {
        QFETCH(QString, program);
        QFETCH(QList<QuickAction>, actions);
        QFETCH(QStringList, mainLines);
        QFETCH(QStringList, lastAction);
        QVERIFY(m_dir.isValid());
        QVERIFY(QDir(m_dir.path()).mkpath("applications"));
        const QString other = m_dir.filePath("applications/other.desktop");
        QFile otherFile(other);
        QVERIFY(otherFile.open(QIODevice::WriteOnly));
        otherFile.write("[Desktop Entry]\nmine\n");
        otherFile.close();

        UserDesktopEntry entry(program, entryPath());
        QVERIFY(entry.setQuickActions(actions));

        const QString text = read(entryPath());
        QCOMPARE(text, entry.text());
        QStringList main;
        for (const QString& line : group(text, "[Desktop Entry]")) {
            if (line.startsWith("Exec=") || line.startsWith("Icon=") || line.startsWith("Actions="))
                main.append(line);
        }
        QCOMPARE(main, mainLines);
        // Everything else is the installed entry's.
        QVERIFY(group(text, "[Desktop Entry]").contains("Comment=Opens Kestrum Light Meter"));
        QVERIFY(group(text, "[Desktop Entry]").contains("X-Purism-FormFactor=Workstation;Mobile;"));
        const QString lastId = mainLines.value(2).section(u';', -2, -2).section(u'=', -1);
        QCOMPARE(group(text, "[Desktop Action " + lastId + "]"), lastAction);
        QCOMPARE(text.count("[Desktop Action "), actions.size());
        QCOMPARE(validation(entryPath()), QString());
        QCOMPARE(read(other), "[Desktop Entry]\nmine\n");
        QCOMPARE(QDir(m_dir.filePath("applications")).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"org.kestrum.Kestrum.desktop", "other.desktop"}));
    }

    void alternateIconIsKeptInTheEntry_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("iconLine");
        QTest::addColumn<QString>("readBack");
        QTest::newRow("an alternate") << "Dark" << true << "Icon=org.kestrum.Kestrum-Dark"
                                      << "Dark";
        QTest::newRow("the app's own") << "" << true << "Icon=org.kestrum.Kestrum"
                                       << "";
        QTest::newRow("not an icon name") << "../evil" << false << "Icon=org.kestrum.Kestrum-Yellow"
                                          << "Yellow";
    }

    void alternateIconIsKeptInTheEntry()
    {
        QFETCH(QString, name);
        QFETCH(bool, accepted);
        QFETCH(QString, iconLine);
        QFETCH(QString, readBack);
        UserDesktopEntry before("/usr/bin/kestrum", entryPath());
        QVERIFY(before.setAlternateIconName("Yellow"));
        QCOMPARE(before.setAlternateIconName(name), accepted);
        QVERIFY(group(read(entryPath()), "[Desktop Entry]").contains(iconLine));
        QCOMPARE(UserDesktopEntry("/usr/bin/kestrum", entryPath()).alternateIconName(), readBack);
    }
};

QTEST_GUILESS_MAIN(UserDesktopEntryTest)
#include "tst_userdesktopentry.moc"
