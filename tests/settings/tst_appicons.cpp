#include "settings/appicons.h"

#include <QFile>
#include <QTest>

using namespace kestrum;

// The app icons on offer: the names the launcher's entry holds, the picker's rows and the
// drawings compiled in.
class AppIconsTest : public QObject {
    Q_OBJECT

private slots:
    void entryNamesReadAsRows_data()
    {
        QTest::addColumn<QString>("entryName"); // the alternate name the entry holds
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("chosenName"); // what choosing that row writes
        QTest::addColumn<QString>("picture");
        QTest::newRow("the app's own") << "" << 0 << ""
                                       << ":/kestrum/icons/Light.svg";
        QTest::newRow("Dark") << "Dark" << 1 << "Dark"
                              << ":/kestrum/icons/Dark.svg";
        QTest::newRow("Yellow") << "Yellow" << 2 << "Yellow"
                                << ":/kestrum/icons/Yellow.svg";
        QTest::newRow("Classic") << "Classic" << 3 << "Classic"
                                 << ":/kestrum/icons/Classic.svg";
        QTest::newRow("Light is no alternate") << "Light" << 0 << ""
                                               << ":/kestrum/icons/Light.svg";
        QTest::newRow("names keep their case") << "dark" << 0 << ""
                                               << ":/kestrum/icons/Light.svg";
        QTest::newRow("a name not on offer") << "AppIconDark" << 0 << ""
                                             << ":/kestrum/icons/Light.svg";
    }

    void entryNamesReadAsRows()
    {
        QFETCH(QString, entryName);
        QFETCH(int, row);
        QFETCH(QString, picture);
        QCOMPARE(AppIcons::rowOf(entryName), row);
        QTEST(AppIcons::alternateName(row).value_or("not offered"), "chosenName");
        QCOMPARE(AppIcons::picturePath(row), picture);
        QVERIFY2(QFile::exists(picture), qPrintable(picture));
    }

    void rowsNotOnOffer_data()
    {
        QTest::addColumn<int>("row");
        QTest::newRow("before the first") << -1;
        QTest::newRow("after the last") << 4;
    }

    void rowsNotOnOffer()
    {
        QFETCH(int, row);
        QCOMPARE(AppIcons::count(), 4);
        QCOMPARE(AppIcons::alternateName(row), std::nullopt);
        QCOMPARE(AppIcons::title(row), QString());
        QCOMPARE(AppIcons::picturePath(row), ":/kestrum/icons/Light.svg");
    }
};

QTEST_GUILESS_MAIN(AppIconsTest)
#include "tst_appicons.moc"
