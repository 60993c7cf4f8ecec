#include "album/locationmanager.h"
#include "platform/fakepositionsource.h"
#include "platform/fakereversegeocoder.h"

#include <QTest>

using namespace kestrum;
using Status = PositionSource::AuthorizationStatus;
using Error = LocationManager::Error;

Q_DECLARE_METATYPE(QList<kestrum::Location>)
Q_DECLARE_METATYPE(std::optional<kestrum::Location>)
Q_DECLARE_METATYPE(std::optional<kestrum::Placemark>)
Q_DECLARE_METATYPE(std::optional<PositionSource::AuthorizationStatus>)
Q_DECLARE_METATYPE(std::optional<LocationManager::Error>)
Q_DECLARE_METATYPE(FakeReverseGeocoder::Outcome)

namespace {
const Location kHome{48.8584, 2.2945, 35.0};
const Location kHarbour{43.2965, 5.3698, 2.0};
const Location kSummit{45.8326, 6.8652, 4805.0};

/// The error a finished future failed with, or nothing when it holds a value.
template <typename T> std::optional<Error> failureOf(QFuture<T> future)
{
    try {
        future.waitForFinished();
    } catch (const LocationManagerException& exception) {
        return exception.error();
    }
    return std::nullopt;
}
} // namespace

class LocationManagerTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        auto source = std::make_unique<FakePositionSource>();
        auto geocoder = std::make_unique<FakeReverseGeocoder>();
        m_source = source.get();
        m_geocoder = geocoder.get();
        m_manager = std::make_unique<LocationManager>(std::move(source), std::move(geocoder));
    }

    void fixYieldsTheLastDeliveredLocation_data()
    {
        QTest::addColumn<QList<Location>>("delivered");
        QTest::addColumn<bool>("fixFails");
        QTest::addColumn<std::optional<Location>>("expected");
        QTest::newRow("one location") << QList{kHome} << false << std::optional(kHome);
        QTest::newRow("three locations")
            << QList{kHome, kHarbour, kSummit} << false << std::optional(kSummit);
        QTest::newRow("empty list") << QList<Location>{} << false << std::optional<Location>();
        QTest::newRow("failed fix") << QList<Location>{} << true << std::optional<Location>();
    }

    void fixYieldsTheLastDeliveredLocation()
    {
        QFETCH(QList<Location>, delivered);
        QFETCH(bool, fixFails);
        QFETCH(std::optional<Location>, expected);

        auto location = m_manager->currentLocation();
        QCOMPARE(m_source->locationRequests(), 1);
        QVERIFY(!location.isFinished());
        if (fixFails)
            m_source->fail();
        else
            m_source->deliver(delivered);

        QVERIFY(location.isFinished());
        QCOMPARE(failureOf(location), std::nullopt); // a failed fix is no error
        QCOMPARE(location.result(), expected);
    }

    void permissionDecidesWhetherAFixIsTaken_data()
    {
        QTest::addColumn<bool>("servicesEnabled");
        QTest::addColumn<Status>("status");
        QTest::addColumn<std::optional<Status>>("answer");
        QTest::addColumn<std::optional<Error>>("expectedError");

        const std::optional<Status> notAsked;
        QTest::newRow("services off") << false << Status::authorizedWhenInUse << notAsked
                                      << std::optional(Error::locationServicesDisabled);
        QTest::newRow("restricted") << true << Status::restricted << notAsked
                                    << std::optional(Error::locationServicesDisabled);
        QTest::newRow("denied") << true << Status::denied << notAsked
                                << std::optional(Error::noPermission);
        QTest::newRow("authorized always")
            << true << Status::authorizedAlways << notAsked << std::optional<Error>();
        QTest::newRow("authorized when in use")
            << true << Status::authorizedWhenInUse << notAsked << std::optional<Error>();
        QTest::newRow("asked, allowed")
            << true << Status::notDetermined << std::optional(Status::authorizedWhenInUse)
            << std::optional<Error>();
        QTest::newRow("asked, denied")
            << true << Status::notDetermined << std::optional(Status::denied)
            << std::optional(Error::noPermission);
        QTest::newRow("asked, restricted")
            << true << Status::notDetermined << std::optional(Status::restricted)
            << std::optional(Error::locationServicesDisabled);
    }

    void permissionDecidesWhetherAFixIsTaken()
    {
        QFETCH(bool, servicesEnabled);
        QFETCH(Status, status);
        QFETCH(std::optional<Status>, answer);
        QFETCH(std::optional<Error>, expectedError);
        m_source->setServicesEnabled(servicesEnabled);
        m_source->setAuthorizationStatus(status);

        auto location = m_manager->currentLocation();
        if (answer) {
            QCOMPARE(m_source->authorizationRequests(), 1);
            QCOMPARE(m_source->locationRequests(), 0); // waits for the answer first
            m_source->answerAuthorization(*answer);
        }
        QCOMPARE(m_source->authorizationRequests(), answer ? 1 : 0);

        if (expectedError) {
            QVERIFY(location.isFinished());
            QCOMPARE(failureOf(location), expectedError);
            QCOMPARE(m_source->locationRequests(), 0);
        } else {
            QCOMPARE(m_source->locationRequests(), 1);
            m_source->deliver({kHarbour});
            QVERIFY(location.isFinished());
            QCOMPARE(location.result(), std::optional(kHarbour));
        }
    }

    void secondRequestReplacesTheWaitingOne()
    {
        auto first = m_manager->currentLocation();
        auto second = m_manager->currentLocation();
        QCOMPARE(m_source->locationRequests(), 2);

        m_source->deliver({kSummit});

        QVERIFY(first.isCanceled());
        QCOMPARE(first.resultCount(), 0);
        QCOMPARE(second.result(), std::optional(kSummit));
    }

    void secondPermissionRequestReplacesTheWaitingOne()
    {
        m_source->setAuthorizationStatus(Status::notDetermined);
        auto first = m_manager->currentLocation();
        auto second = m_manager->currentLocation();

        m_source->answerAuthorization(Status::authorizedWhenInUse);

        QVERIFY(first.isCanceled());
        QCOMPARE(m_source->locationRequests(), 1); // for the second caller only
        m_source->deliver({kHome});
        QCOMPARE(second.result(), std::optional(kHome));
    }

    void eachRequestIsAnsweredOnce()
    {
        m_source->deliver({kHarbour}); // nobody waits: dropped
        m_source->answerAuthorization(Status::authorizedWhenInUse);

        auto location = m_manager->currentLocation();
        QVERIFY(!location.isFinished());
        m_source->deliver({kHome});
        m_source->deliver({kSummit});
        m_source->fail();

        QCOMPARE(location.results(), QList{std::optional(kHome)});
    }

    void placemarkSwallowsFailures_data()
    {
        QTest::addColumn<FakeReverseGeocoder::Outcome>("outcome");
        QTest::addColumn<std::optional<Placemark>>("expected");
        const Placemark tower{QStringLiteral("Tour Eiffel"), QStringLiteral("Paris")};
        QTest::newRow("found") << FakeReverseGeocoder::Outcome(std::optional(tower))
                               << std::optional(tower);
        QTest::newRow("nothing there") << FakeReverseGeocoder::Outcome(std::optional<Placemark>())
                                       << std::optional<Placemark>();
        QTest::newRow("request failed")
            << FakeReverseGeocoder::Outcome(ReverseGeocoder::Error::requestFailed)
            << std::optional<Placemark>();
        QTest::newRow("malformed answer")
            << FakeReverseGeocoder::Outcome(ReverseGeocoder::Error::malformedAnswer)
            << std::optional<Placemark>();
        QTest::newRow("timed out") << FakeReverseGeocoder::Outcome(ReverseGeocoder::Error::timedOut)
                                   << std::optional<Placemark>();
    }

    void placemarkSwallowsFailures()
    {
        QFETCH(FakeReverseGeocoder::Outcome, outcome);
        QFETCH(std::optional<Placemark>, expected);
        m_geocoder->setOutcome(outcome);

        auto placemark = m_manager->placemark(kHome);

        QVERIFY(placemark.isFinished());
        QCOMPARE(placemark.result(), expected);
        QCOMPARE(m_geocoder->requests(), QList{kHome});
    }

private:
    std::unique_ptr<LocationManager> m_manager;
    FakePositionSource* m_source = nullptr;
    FakeReverseGeocoder* m_geocoder = nullptr;
};

QTEST_GUILESS_MAIN(LocationManagerTest)
#include "tst_locationmanager.moc"
