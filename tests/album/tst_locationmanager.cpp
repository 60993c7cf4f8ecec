#include "album/locationmanager.h"
#include "support/fakepositionsource.h"
#include "support/fakereversegeocoder.h"

#include <QTest>

using namespace kestrum;
using Status = PositionSource::AuthorizationStatus;
using Error = LocationManager::Error;
using Outcome = FakeReverseGeocoder::Outcome;

namespace {
const Location kHome{48.8584, 2.2945, 35.0};
const Location kHarbour{43.2965, 5.3698, 2.0};
const Location kSummit{45.8326, 6.8652, 4805.0};

template <typename T> std::optional<Error> failureOf(QFuture<T> future)
{
    try {
        future.waitForFinished();
    } catch (const LocationManagerException& exception) {
        return exception.error();
    }
    return std::nullopt;
}

struct Request {
    bool servicesEnabled;
    Status status;
    std::optional<Status> answer; // the user's, when asked
    std::optional<Error> error;
    std::optional<QList<Location>> delivered; // nothing: the fix fails
    std::optional<Location> expected;
};
} // namespace

Q_DECLARE_METATYPE(Request)
Q_DECLARE_METATYPE(FakeReverseGeocoder::Outcome)

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

    void currentLocation_data()
    {
        QTest::addColumn<Request>("request");
        const auto row = [](const char* tag, Request request) { QTest::newRow(tag) << request; };
        const auto inUse = Status::authorizedWhenInUse;
        const auto asked = Status::notDetermined;
        const auto off = Error::locationServicesDisabled;
        row("one location", {true, inUse, {}, {}, QList{kHome}, kHome});
        row("three locations", {true, inUse, {}, {}, QList{kHome, kHarbour, kSummit}, kSummit});
        row("empty list", {true, inUse, {}, {}, QList<Location>(), {}});
        row("failed fix", {true, inUse, {}, {}, {}, {}});
        row("services off", {false, inUse, {}, off, {}, {}});
        row("restricted", {true, Status::restricted, {}, off, {}, {}});
        row("denied", {true, Status::denied, {}, Error::noPermission, {}, {}});
        row("authorized always",
            {true, Status::authorizedAlways, {}, {}, QList{kHarbour}, kHarbour});
        row("asked, allowed", {true, asked, inUse, {}, QList{kHarbour}, kHarbour});
        row("asked, denied", {true, asked, Status::denied, Error::noPermission, {}, {}});
        row("asked, restricted", {true, asked, Status::restricted, off, {}, {}});
    }

    void currentLocation()
    {
        QFETCH(Request, request);
        const auto& [servicesEnabled, status, answer, expectedError, delivered, expected] = request;
        m_source->setServicesEnabled(servicesEnabled);
        m_source->answerAuthorization(status); // nobody waits: only sets the status
        m_source->deliver({kSummit});          // nobody waits: dropped
        auto location = m_manager->currentLocation();
        if (answer) {
            QCOMPARE(m_source->locationRequests(), 0); // waits for the answer first
            m_source->answerAuthorization(*answer);
        }
        QCOMPARE(m_source->authorizationRequests(), answer ? 1 : 0);
        QCOMPARE(m_source->locationRequests(), expectedError ? 0 : 1);
        if (!expectedError) {
            QVERIFY(!location.isFinished());
            if (delivered)
                m_source->deliver(*delivered);
            else
                m_source->fail();
            m_source->deliver({kHarbour, kHome}); // each request is answered once
            m_source->fail();
        }
        QVERIFY(location.isFinished());
        QCOMPARE(failureOf(location), expectedError); // a failed fix is no error
        if (!expectedError)
            QCOMPARE(location.results(), QList{expected});
    }

    // Two logs in quick succession: the second shares the first one's fix (and question),
    // so both photos are kept, with the same position.
    void secondRequestSharesTheWaitingOne_data()
    {
        QTest::addColumn<bool>("asking");
        QTest::newRow("waiting for a fix") << false;
        QTest::newRow("waiting for permission") << true;
    }

    void secondRequestSharesTheWaitingOne()
    {
        QFETCH(bool, asking);
        if (asking)
            m_source->setAuthorizationStatus(Status::notDetermined);
        auto first = m_manager->currentLocation();
        auto second = m_manager->currentLocation();
        if (asking)
            m_source->answerAuthorization(Status::authorizedWhenInUse);
        QCOMPARE(m_source->authorizationRequests(), asking ? 1 : 0);
        QCOMPARE(m_source->locationRequests(), 1);
        m_source->deliver({kSummit});
        QCOMPARE(first.results(), QList{std::optional(kSummit)});
        QCOMPARE(second.results(), QList{std::optional(kSummit)});
    }

    void placemarkSwallowsFailures_data()
    {
        QTest::addColumn<Outcome>("outcome");
        QTest::newRow("found") << Outcome(Placemark{"Tour Eiffel", "Paris"});
        QTest::newRow("nothing there") << Outcome(std::optional<Placemark>());
        QTest::newRow("failed") << Outcome(ReverseGeocoder::Error::requestFailed);
    }

    void placemarkSwallowsFailures()
    {
        QFETCH(Outcome, outcome);
        m_geocoder->setOutcome(outcome);
        auto placemark = m_manager->placemark(kHome);
        QVERIFY(placemark.isFinished());
        // A placemark or its absence passes through; an error becomes no placemark.
        const auto* passed = std::get_if<std::optional<Placemark>>(&outcome);
        QCOMPARE(placemark.result(), passed ? *passed : std::optional<Placemark>());
        QCOMPARE(m_geocoder->requests(), QList{kHome});
    }

private:
    std::unique_ptr<LocationManager> m_manager;
    FakePositionSource* m_source = nullptr;
    FakeReverseGeocoder* m_geocoder = nullptr;
};

QTEST_GUILESS_MAIN(LocationManagerTest)
#include "tst_locationmanager.moc"
