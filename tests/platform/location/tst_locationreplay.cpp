#include "album/locationmanager.h"
#include "platform/location/positionsourcechoice.h"
#include "platform/location/qtpositionsource.h"
#include "support/fakereversegeocoder.h"

#include <QTest>
#include <QUrl>

using namespace kestrum;
using namespace std::chrono_literals;
using Error = LocationManager::Error;

Q_DECLARE_METATYPE(kestrum::PositionSourceChoice)
Q_DECLARE_METATYPE(std::optional<Error>)

namespace {
const Location kFirstFix{48.8584, 2.2945, 35.0}; // of data/replay.nmea
constexpr double kDegreesTolerance = 1e-6;

std::optional<Error> failureOf(QFuture<std::optional<Location>> future)
{
    try {
        future.waitForFinished();
    } catch (const LocationManagerException& exception) {
        return exception.error();
    }
    return std::nullopt;
}
} // namespace

/// Positions through the real Qt Positioning plugins, replaying NMEA logs.
class LocationReplayTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Qt Positioning hides untestable plugins (NMEA among them) from Qt Test programs.
        qunsetenv("QT_QTESTLIB_RUNNING");
    }

    void choiceFollowsTheVariable_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<PositionSourceChoice>("expected");
        const PositionSourceChoice geoClue{
            "geoclue2", {{"desktopId", "org.kestrum.Kestrum"}}, true};
        const PositionSourceChoice none;
        QTest::newRow("unset") << QString() << geoClue;
        QTest::newRow("geoclue2") << "geoclue2" << geoClue;
        QTest::newRow("log path") << "nmea:/var/log/walk.nmea"
                                  << PositionSourceChoice{
                                         "nmea", {{"nmea.source", "/var/log/walk.nmea"}}, false};
        QTest::newRow("none") << "none" << none;
        QTest::newRow("log without path") << "nmea:" << none;
        QTest::newRow("unknown") << "gps" << none;
    }

    void choiceFollowsTheVariable()
    {
        QFETCH(QString, value);
        QFETCH(PositionSourceChoice, expected);
        if (value == u"gps" || value == u"nmea:")
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("KESTRUM_POSITION_SOURCE"));
        QCOMPARE(PositionSourceChoice::parse(value), expected);
    }

    void replayedLogGivesItsFix_data()
    {
        QTest::addColumn<QString>("variable");
        QTest::addColumn<bool>("asks"); // for permission first, as GeoClue does
        const QString log = QFINDTESTDATA("data/replay.nmea");
        QTest::newRow("path") << "nmea:" + log << false;
        QTest::newRow("file URL") << "nmea:" + QUrl::fromLocalFile(log).toString() << false;
        QTest::newRow("asking for permission") << "nmea:" + log << true;
    }

    void replayedLogGivesItsFix()
    {
        using Status = PositionSource::AuthorizationStatus;
        QFETCH(QString, variable);
        QFETCH(bool, asks);
        auto choice = PositionSourceChoice::parse(variable);
        choice.asksPermission = asks;
        auto source = std::make_unique<QtPositionSource>(choice);
        const QtPositionSource* observed = source.get();
        QCOMPARE(observed->authorizationStatus(),
                 asks ? Status::notDetermined : Status::authorizedWhenInUse);
        LocationManager manager(std::move(source), std::make_unique<FakeReverseGeocoder>());
        auto first = manager.currentLocation();
        QTRY_VERIFY(first.isFinished());
        QCOMPARE(failureOf(first), std::nullopt);
        const std::optional<Location> fix = first.result();
        QVERIFY(fix);
        if (!asks) { // asking takes the first fix itself
            QVERIFY(qAbs(fix->latitude - kFirstFix.latitude) < kDegreesTolerance);
            QVERIFY(qAbs(fix->longitude - kFirstFix.longitude) < kDegreesTolerance);
            QCOMPARE(fix->altitude, kFirstFix.altitude);
        }
        QCOMPARE(observed->authorizationStatus(), Status::authorizedWhenInUse);

        // A later request gets a fix of its own.
        auto second = manager.currentLocation();
        QTRY_VERIFY(second.isFinished());
        QCOMPARE(failureOf(second), std::nullopt);
        QVERIFY(second.result());
    }

    // No fix in time is no location; no source at all means the services are off.
    void noLocation_data()
    {
        QTest::addColumn<QString>("variable");
        QTest::addColumn<std::optional<Error>>("error");
        QTest::newRow("log without a fix")
            << "nmea:" + QFINDTESTDATA("data/nofix.nmea") << std::optional<Error>();
        QTest::newRow("none") << "none" << std::optional(Error::locationServicesDisabled);
        QTest::newRow("missing log") << "nmea:/nonexistent/kestrum/walk.nmea"
                                     << std::optional(Error::locationServicesDisabled);
    }

    void noLocation()
    {
        QFETCH(QString, variable);
        QFETCH(std::optional<Error>, error);
        LocationManager manager(
            std::make_unique<QtPositionSource>(PositionSourceChoice::parse(variable), 50ms),
            std::make_unique<FakeReverseGeocoder>());
        auto location = manager.currentLocation();
        QTRY_VERIFY(location.isFinished());
        QCOMPARE(failureOf(location), error);
        if (!error)
            QCOMPARE(location.result(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(LocationReplayTest)
#include "tst_locationreplay.moc"
