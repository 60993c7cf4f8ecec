#include "camera/anycameracontroller.h"
#include "camera/cameracontroller.h"
#include "camera/cameracontrollererror.h"

#include "album/photoalbum.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "support/fakecapturedevice.h"
#include "support/fakephotolibrary.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <cmath>
#include <limits>

using namespace kestrum;
using Kind = CaptureDevice::Kind;
using Readouts = FakeCaptureDevice::Readouts;
namespace key = imageproperty;

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(CameraControllerError)
Q_DECLARE_METATYPE(AuthorizationStatus)
Q_DECLARE_METATYPE(FakeCaptureDevice::Readouts)

namespace {

// A controller on a fake device, with an album on a library in memory.
struct Rig {
    Rig()
    {
        auto fake = std::make_unique<FakeCaptureDevice>();
        device = fake.get();
        controller = std::make_unique<CameraController>(
            std::move(fake), [this] { return &album; }, metadata,
            [this](const CameraFrame& frame) { consumed.append(frame); });
    }

    /// Sets up and waits until the session runs and the zoom was reset.
    void start()
    {
        controller->setUp();
        QTRY_VERIFY(controller->sessionIsRunning());
        QTRY_VERIFY(controller->currentZoomOption().has_value());
    }
    /// Starts a camera of `kind` switching lenses at 2× and 6×, zooming from 1× to `maxZoom`.
    void start(Kind kind, float maxZoom = 100.0f)
    {
        device->setKind(kind, {2.0f, 6.0f});
        device->setZoomRange(1.0f, maxZoom);
        start();
    }
    /// Every value `lv` passes from now on, beginning with the current one.
    QList<double> listen()
    {
        controller->lv().subscribe(&context, [this](double value) { heard.append(value); });
        return heard;
    }
    void read(float iso, float durationS, float aperture, float offset)
    {
        device->setReadouts({iso, durationS, aperture, offset});
    }
    ZoomOption zoom() const { return *controller->currentZoomOption(); }
    QStringList lastCalls(qsizetype n) const
    {
        return device->calls().mid(device->calls().size() - n);
    }

    FakePhotoLibrary library;
    Exiv2ImageMetadata metadata;
    PhotoAlbum album{library, metadata};
    FakeCaptureDevice* device = nullptr;
    QList<CameraFrame> consumed;
    std::unique_ptr<CameraController> controller;
    QObject context;
    QList<double> heard;
};

QStringList titles(const QList<ZoomOption>& options)
{
    QStringList out;
    for (const ZoomOption& option : options)
        out.append(option.title);
    return out;
}

CameraFrame greyFrame()
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(qRgb(90, 120, 150));
    return {image, std::chrono::microseconds(1000)};
}

template <typename Exception> std::optional<Exception> failureOf(QFuture<void> future)
{
    try {
        future.waitForFinished();
    } catch (const Exception& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace

// The live camera controller on a scripted capture device.
class CameraControllerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_temp.isValid());
        // The capture file goes to the temporary directory: keep it inside the test's own.
        qputenv("TMPDIR", m_temp.path().toLocal8Bit());
        QCOMPARE(QDir::tempPath(), QDir(m_temp.path()).canonicalPath());
    }

    void lightValuesPassWhenTheirTenthsDiffer_data()
    {
        QTest::addColumn<QList<float>>("isos");
        QTest::addColumn<QList<float>>("offsets"); // with t = 1 s and f/1 the offset is the LV
        QTest::addColumn<QList<double>>("heard");  // after the seed 0
        const float nan = std::numeric_limits<float>::quiet_NaN();
        // The tenths filter itself is tst_lightvaluestream's; these rows show lv applies it.
        QTest::newRow("same tenth")
            << QList<float>{100, 100} << QList<float>{8.04f, 8.07f} << QList<double>{8.04f};
        QTest::newRow("NaN never")
            << QList<float>{100, 100, 100} << QList<float>{nan, 3.0f, nan} << QList<double>{3.0f};
        QTest::newRow("ISO 0 publishes 0")
            << QList<float>{100, 0} << QList<float>{5.0f, 5.0f} << QList<double>{5.0f, 0.0};
    }

    void lightValuesPassWhenTheirTenthsDiffer()
    {
        QFETCH(QList<float>, isos);
        QFETCH(QList<float>, offsets);
        QFETCH(QList<double>, heard);
        Rig rig;
        rig.start();
        QCOMPARE(rig.listen(), QList<double>{0.0}); // the seed
        for (qsizetype i = 0; i < isos.size(); ++i) {
            rig.read(isos.at(i), 1.0f, 1.0f, offsets.at(i));
            rig.controller->measure();
        }
        QCOMPARE(rig.heard, QList<double>{0.0} + heard);
    }

    void lightValueFollowsTheReadouts_data()
    {
        QTest::addColumn<Readouts>("readouts");
        QTest::addColumn<bool>("setUp");
        QTest::addColumn<double>("lightValue");
        QTest::newRow("sunny sixteen") << Readouts{100.f, 1 / 125.f, 16.f, 0.f} << true << 14.9658;
        QTest::newRow("indoors, offset")
            << Readouts{800.f, 1 / 30.f, 1.8f, -0.66f} << true << 2.9429;
        QTest::newRow("no exposure time yet")
            << Readouts{400.f, std::nullopt, 2.f, 0.f} << true << 0.0;
        QTest::newRow("no offset counts as on target")
            << Readouts{200.f, 0.5f, 4.f, std::nullopt} << true << 4.0;
        QTest::newRow("no camera before set-up") << Readouts{100.f, 1.f, 1.f, 7.f} << false << 0.0;
    }

    void lightValueFollowsTheReadouts()
    {
        QFETCH(Readouts, readouts);
        QFETCH(bool, setUp);
        QFETCH(double, lightValue);
        Rig rig;
        if (setUp)
            rig.start();
        rig.device->setReadouts(readouts);
        rig.controller->measure();
        const double heard = rig.listen().last();
        QVERIFY2(std::fabs(heard - lightValue) < 1e-4, qPrintable(QString::number(heard)));
    }

    void zoomOptionsFollowTheLenses_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QList<float>>("switchOver");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<float>("oneTimesFactor");
        QTest::newRow("single lens")
            << Kind::wideAngle << QList<float>{} << QStringList{"1"} << 1.0f;
        QTest::newRow("telephoto only")
            << Kind::telephoto << QList<float>{2.0f} << QStringList{"1"} << 1.0f;
        QTest::newRow("triple") << Kind::triple << QList<float>{2.0f, 6.0f}
                                << QStringList{"0.5", "1", "3"} << 2.0f;
        QTest::newRow("dual wide")
            << Kind::dualWide << QList<float>{2.0f} << QStringList{"0.5", "1"} << 2.0f;
        QTest::newRow("dual") << Kind::dual << QList<float>{2.0f} << QStringList{"1", "2"} << 1.0f;
    }

    void zoomOptionsFollowTheLenses()
    {
        QFETCH(Kind, kind);
        QFETCH(QList<float>, switchOver);
        QFETCH(QStringList, titles);
        QFETCH(float, oneTimesFactor);
        Rig rig;
        rig.device->setKind(kind, switchOver);
        QVERIFY(rig.controller->zoomOptions().isEmpty());
        QVERIFY(!rig.controller->currentZoomOption());
        rig.start();
        QCOMPARE(::titles(rig.controller->zoomOptions()), titles);
        // The session's start resets the zoom to the 1× option, ramping the camera there.
        QCOMPARE(rig.zoom().factor, oneTimesFactor);
        QCOMPARE(rig.zoom().activeTitle, "1×");
        QCOMPARE(
            rig.lastCalls(3),
            (QStringList{"lock", QStringLiteral("ramp %1 at 6").arg(oneTimesFactor), "unlock"}));
    }

    void everyStartResetsTheZoom()
    {
        Rig rig;
        rig.start(Kind::triple);
        rig.controller->setCurrentZoomOption(rig.controller->zoomOptions().last());
        QCOMPARE(rig.device->zoomFactor(), 6.0f);
        QSignalSpy running(rig.controller.get(), &CameraController::sessionIsRunningChanged);
        rig.device->setRunning(false);
        QTRY_VERIFY(!rig.controller->sessionIsRunning());
        QCOMPARE(rig.zoom().factor, 6.0f);
        rig.device->setRunning(true);
        QTRY_COMPARE(rig.zoom().factor, 2.0f);
        QCOMPARE(rig.device->zoomFactor(), 2.0f);
        QCOMPARE(running.count(), 2);
    }

    void sessionStartsOffTheMainThreadAndFeedsTheConsumer()
    {
        Rig rig;
        QCOMPARE(rig.controller->session(), nullptr);
        rig.start();
        QCOMPARE(rig.device->startCount(), 1);
        QVERIFY(rig.device->startThread() != QThread::currentThread());
        QCOMPARE(rig.controller->session(), rig.device);
        rig.device->pushFrame(greyFrame());
        rig.device->pushFrame(greyFrame());
        QCOMPARE(rig.consumed.size(), 2);
        QCOMPARE(rig.consumed.first().presentationTime, std::chrono::microseconds(1000));
    }

    void clampKeepsShownZoomAtMostTen_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<float>("max");
        QTest::addColumn<float>("factor");
        QTest::addColumn<float>("clamped");
        QTest::newRow("single lens, shown 15") << Kind::wideAngle << 100.0f << 15.0f << 10.0f;
        QTest::newRow("single lens, small maximum") << Kind::wideAngle << 4.0f << 7.0f << 4.0f;
        QTest::newRow("below the minimum") << Kind::wideAngle << 100.0f << 0.4f << 1.0f;
        QTest::newRow("triple, shown 12") << Kind::triple << 100.0f << 24.0f << 20.0f;
        QTest::newRow("dual does not halve") << Kind::dual << 100.0f << 24.0f << 10.0f;
    }

    void clampKeepsShownZoomAtMostTen()
    {
        QFETCH(Kind, kind);
        QFETCH(float, max);
        QFETCH(float, factor);
        QFETCH(float, clamped);
        Rig rig;
        rig.start(kind, max);
        QCOMPARE(rig.controller->clampZoomFactor(factor), clamped);
    }

    void stepsMoveByATenthOfShownZoom_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<float>("max");
        QTest::addColumn<float>("top");
        QTest::addColumn<QString>("topTitle");
        QTest::newRow("single lens") << Kind::wideAngle << 100.0f << 10.0f << "10×";
        QTest::newRow("single lens, device maximum 4") << Kind::wideAngle << 4.0f << 4.0f << "4×";
        QTest::newRow("triple") << Kind::triple << 100.0f << 20.0f << "10×";
    }

    void stepsMoveByATenthOfShownZoom()
    {
        QFETCH(Kind, kind);
        QFETCH(float, max);
        QFETCH(float, top);
        QFETCH(QString, topTitle);
        Rig rig;
        rig.start(kind, max);
        rig.controller->incrementZoom();
        QCOMPARE(rig.zoom().activeTitle, "1.1×");
        QCOMPARE(rig.lastCalls(3),
                 (QStringList{"lock", QStringLiteral("ramp %1 at 6").arg(rig.device->zoomFactor()),
                              "unlock"}));
        for (int i = 0; i < 200; ++i)
            rig.controller->incrementZoom();
        QCOMPARE(rig.zoom().factor, top);
        QCOMPARE(rig.zoom().activeTitle, topTitle);
        for (int i = 0; i < 200; ++i)
            rig.controller->decrementZoom();
        QCOMPARE(rig.zoom().factor, 1.0f);
    }

    void pinchCommitsItsFactor_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<float>("pinch");
        QTest::addColumn<float>("factor");
        QTest::newRow("single lens") << Kind::wideAngle << 1.7f << 1.7f;
        QTest::newRow("triple, over the 1× lens") << Kind::triple << 1.7f << 3.4f;
        QTest::newRow("beyond shown 10") << Kind::triple << 12.0f << 20.0f;
    }

    void pinchCommitsItsFactor()
    {
        QFETCH(Kind, kind);
        QFETCH(float, pinch);
        QFETCH(float, factor);
        Rig rig;
        rig.start(kind);
        rig.device->clearCalls();
        // Published changes are announced before they are made.
        QList<float> seenAtAnnouncement;
        connect(rig.controller.get(), &CameraController::objectWillChange, &rig.context,
                [&] { seenAtAnnouncement.append(rig.controller->interactiveZoomFactor()); });
        QSignalSpy changed(rig.controller.get(), &CameraController::interactiveZoomFactorChanged);
        rig.controller->setInteractiveZoomFactor(1.3f);
        QCOMPARE(seenAtAnnouncement.first(), 1.0f);
        QCOMPARE(changed.count(), 1);
        rig.controller->setInteractiveZoomFactor(pinch);
        // Relative to the option the pinch began on, applied at once.
        QCOMPARE(rig.zoom().factor, factor);
        QCOMPARE(rig.device->calls().mid(3),
                 (QStringList{"lock", QStringLiteral("zoom %1").arg(factor), "unlock"}));
        rig.controller->commitInteractiveZoom();
        QCOMPARE(rig.controller->interactiveZoomFactor(), 1.0f);
        QCOMPARE(rig.zoom().factor, factor);
        // The next pinch starts from the committed option.
        rig.controller->setInteractiveZoomFactor(0.5f);
        QCOMPARE(rig.zoom().factor, rig.controller->clampZoomFactor(0.5f * factor));
    }

    void worksThroughTheBox()
    {
        auto fake = std::make_unique<FakeCaptureDevice>();
        FakeCaptureDevice* device = fake.get();
        Exiv2ImageMetadata metadata;
        AnyCameraController box(std::make_shared<CameraController>(
            std::move(fake), CameraController::PhotoAlbumSource(), metadata,
            CameraController::FrameConsumer()));
        QSignalSpy announced(&box, &AnyCameraController::objectWillChange);
        box.setUp();
        QTRY_VERIFY(box.sessionIsRunning());
        QVERIFY(!announced.isEmpty());
        device->setReadouts({100.f, 1.f, 1.f, 6.2f});
        QList<double> heard;
        QObject context;
        box.lv().subscribe(&context, [&heard](double value) { heard.append(value); });
        box.measure();
        QCOMPARE(heard, (QList<double>{0.0, double(6.2f)}));
    }

    void setUpFailures_data()
    {
        QTest::addColumn<QString>("failure");
        QTest::addColumn<CameraControllerError>("error");
        QTest::addColumn<bool>("hasSession");
        QTest::newRow("no session")
            << "session" << CameraControllerError::sessionCantBeCreated << false;
        QTest::newRow("no camera") << "camera" << CameraControllerError::noCameraDevice << true;
        QTest::newRow("input not added")
            << "addInput" << CameraControllerError::inputCantBeAdded << true;
        QTest::newRow("output not added")
            << "addOutput" << CameraControllerError::outputCantBeAdded << true;
    }

    void setUpFailures()
    {
        QFETCH(QString, failure);
        QFETCH(CameraControllerError, error);
        QFETCH(bool, hasSession);
        Rig rig;
        rig.device->setSessionFails(failure == "session");
        rig.device->setHasCamera(failure != "camera");
        rig.device->setCanAddInput(failure != "addInput");
        rig.device->setCanAddOutput(failure != "addOutput");
        try {
            rig.controller->setUp();
            QFAIL("set-up succeeded");
        } catch (const CameraControllerException& thrown) {
            QCOMPARE(thrown.error(), error);
        }
        QCOMPARE(rig.controller->session() != nullptr, hasSession); // nothing is rolled back
        QCoreApplication::processEvents();
        QCOMPARE(rig.device->startCount(), 0);
        rig.device->pushFrame(greyFrame());
        QVERIFY(rig.consumed.isEmpty());
    }

    void inputFailureIsThePlatformsOwn()
    {
        Rig rig;
        rig.device->setInputError(QStringLiteral("/dev/video0: Permission denied"));
        try {
            rig.controller->setUp();
            QFAIL("set-up succeeded");
        } catch (const CaptureDeviceException& thrown) {
            QCOMPARE(thrown.reason(), "/dev/video0: Permission denied");
        }
    }

    void setUpConfiguresTheCameraAndSurvivesALockFailure()
    {
        Rig rig;
        rig.controller->setUp();
        QCOMPARE(rig.device->calls().mid(0, 4),
                 (QStringList{"lock", "focus continuous", "exposure mode continuousAutoExposure",
                              "unlock"}));
        Rig locked;
        locked.device->setLockError(QStringLiteral("busy"));
        // Once when setting up, once when the start resets the zoom.
        QTest::ignoreMessage(QtWarningMsg, "Could not lock device for configuration: busy");
        QTest::ignoreMessage(QtWarningMsg, "Could not lock device for configuration: busy");
        locked.start();
        QCOMPARE(locked.device->calls(), QStringList{"start"});
    }

    void exposeMetersAtThePoint_data()
    {
        QTest::addColumn<bool>("pointSupported");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("point of interest")
            << true
            << QStringList{"lock", "point 0.25,0.75", "exposure mode autoExpose", "monitoring on",
                           "unlock"};
        QTest::newRow("no point of interest")
            << false << QStringList{"lock", "monitoring on", "unlock"};
    }

    // Exposing meters at once; a change of subject returns to continuous exposure.
    void exposeMetersAtThePoint()
    {
        QFETCH(bool, pointSupported);
        QFETCH(QStringList, calls);
        Rig rig;
        rig.start();
        rig.device->setPointOfInterestSupported(pointSupported);
        rig.read(100, 1, 1, 4.5f);
        rig.listen();
        rig.device->clearCalls();
        rig.controller->expose({0.25, 0.75}, ExposureMode::autoExpose, true);
        QCOMPARE(rig.device->calls(), calls);
        QCOMPARE(rig.heard.last(), double(4.5f));
        rig.device->clearCalls();
        rig.device->changeSubjectArea();
        QCOMPARE(rig.device->calls(),
                 (QStringList{"lock", "exposure mode continuousAutoExposure", "unlock"}));
    }

    void authorization_data()
    {
        QTest::addColumn<bool>("granted");
        QTest::addColumn<AuthorizationStatus>("status");
        QTest::newRow("granted") << true << AuthorizationStatus::authorized;
        QTest::newRow("refused") << false << AuthorizationStatus::denied;
    }

    void authorization()
    {
        QFETCH(bool, granted);
        QFETCH(AuthorizationStatus, status);
        Rig asked;
        asked.device->setAuthorization(AuthorizationStatus::notDetermined);
        asked.device->setAccessAnswer(granted);
        asked.controller->requestPermission();
        QTRY_COMPARE(asked.controller->authorizationStatus(), status);
    }

    void authorizationIsReadAgainInTheForeground()
    {
        auto fake = std::make_unique<FakeCaptureDevice>();
        fake->setAuthorization(AuthorizationStatus::denied);
        FakeCaptureDevice* device = fake.get();
        Exiv2ImageMetadata metadata;
        CameraController controller(std::move(fake), {}, metadata, {});
        QCOMPARE(controller.authorizationStatus(), AuthorizationStatus::denied);
        device->setAuthorization(AuthorizationStatus::authorized); // changed in the settings
        emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        QCOMPARE(controller.authorizationStatus(), AuthorizationStatus::denied);
        emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        QCOMPARE(controller.authorizationStatus(), AuthorizationStatus::authorized);
    }

    void loggedPhotoCarriesTheMeteredExposure_data()
    {
        QTest::addColumn<CameraFrame::Orientation>("orientation");
        QTest::addColumn<int>("exifOrientation");
        QTest::newRow("webcam, upright") << CameraFrame::Orientation::up << 1;
        QTest::newRow("phone sensor, a quarter turn off") << CameraFrame::Orientation::right << 6;
    }

    void loggedPhotoCarriesTheMeteredExposure()
    {
        QFETCH(CameraFrame::Orientation, orientation);
        Rig rig;
        rig.start();
        int metadataRequests = 0;
        rig.controller->setGetMetadata([&metadataRequests] {
            ++metadataRequests;
            return QtFuture::makeReadyFuture(ImageProperties{
                {key::kExifDictionary, QVariantMap{{key::kISOSpeedRatings, QVariantList{400}},
                                                   {key::kFNumber, 2.8},
                                                   {key::kExposureTime, 0.004}}}});
        });
        QFuture<void> logged = rig.controller->logExposure();
        QCoreApplication::processEvents(); // the permission check answers
        QCOMPARE(metadataRequests, 0);     // nothing happens before the next frame
        CameraFrame frame = greyFrame();
        frame.orientation = orientation;
        rig.device->pushFrame(frame);
        QTRY_VERIFY(logged.isFinished());
        logged.waitForFinished(); // rethrows a failure
        QCOMPARE(metadataRequests, 1);
        QCOMPARE(rig.consumed.size(), 1);
        const auto album = rig.library.fetchAlbum(PhotoAlbum::kAlbumTitle);
        QVERIFY(album);
        const QList<PhotoLibraryAsset> assets = rig.library.fetchAssets(*album);
        QCOMPARE(assets.size(), 1);
        QCOMPARE(temporaryFiles(), QStringList()); // the photo's own file is gone again

        QProcess exiftool; // reads the album's copy from its standard input
        exiftool.start("exiftool", {"-json", "-n", "-ISO", "-FNumber", "-ExposureTime",
                                    "-ImageWidth", "-ImageHeight", "-Orientation", "-"});
        exiftool.write(rig.library.storedDataReader(assets.first())());
        exiftool.closeWriteChannel();
        QVERIFY2(exiftool.waitForFinished(), "exiftool (libimage-exiftool-perl) must be installed");
        const QJsonObject tags =
            QJsonDocument::fromJson(exiftool.readAllStandardOutput()).array().first().toObject();
        QCOMPARE(tags.value("ISO").toInt(), 400);
        QCOMPARE(tags.value("FNumber").toDouble(), 2.8);
        QCOMPARE(tags.value("ExposureTime").toDouble(), 0.004);
        QCOMPARE(tags.value("ImageWidth").toInt(), 64);
        QCOMPARE(tags.value("ImageHeight").toInt(), 48);
        QTEST(tags.value("Orientation").toInt(), "exifOrientation");
    }

    void albumPermissionFailureCapturesNothing()
    {
        Rig rig;
        rig.start();
        rig.library.setAuthorizationStatus(PhotoLibraryAuthorization::denied);
        bool asked = false;
        rig.controller->setGetMetadata([&asked] {
            asked = true;
            return QtFuture::makeReadyFuture(ImageProperties());
        });
        QFuture<void> logged = rig.controller->logExposure();
        QTRY_VERIFY(logged.isFinished());
        const auto error = failureOf<PhotoAlbumException>(logged);
        QVERIFY(error);
        QCOMPARE(error->error(), PhotoAlbum::Error::noPermission);
        rig.device->pushFrame(greyFrame());
        QCoreApplication::processEvents();
        QVERIFY(!asked);
        QCOMPARE(temporaryFiles(), QStringList());
    }

    void captureFailures_data()
    {
        QTest::addColumn<bool>("emptyFrame");
        QTest::newRow("frame without an image") << true;
        QTest::newRow("library refuses the photo") << false;
    }

    void captureFailures()
    {
        QFETCH(bool, emptyFrame);
        Rig rig;
        rig.start();
        if (emptyFrame)
            QTest::ignoreMessage(QtWarningMsg, "Capture failed: the frame has no image");
        else
            rig.library.setAssetCreationError(PhotoLibrary::Error::writeFailed);
        QFuture<void> logged = rig.controller->logExposure();
        QCoreApplication::processEvents();
        rig.device->pushFrame(emptyFrame ? CameraFrame{} : greyFrame());
        QTRY_VERIFY(logged.isFinished());
        if (emptyFrame) {
            const auto error = failureOf<CameraControllerException>(logged);
            QVERIFY(error);
            QCOMPARE(error->error(), CameraControllerError::captureFailed);
        } else {
            const auto error = failureOf<PhotoLibraryException>(logged);
            QVERIFY(error);
            QCOMPARE(error->error(), PhotoLibrary::Error::writeFailed);
        }
    }

    // Two photos whose metadata (the location fix) arrives only after both frames came:
    // each keeps its own frame.
    void twoLogsInQuickSuccessionKeepTheirOwnFrames()
    {
        Rig rig;
        rig.start();
        QList<std::shared_ptr<QPromise<QVariantMap>>> fixes;
        rig.controller->setGetMetadata([&fixes] {
            fixes.append(std::make_shared<QPromise<QVariantMap>>());
            fixes.last()->start();
            return fixes.last()->future();
        });
        QList<QFuture<void>> logged;
        for (const QRgb colour : {qRgb(0, 0, 0), qRgb(255, 255, 255)}) {
            logged.append(rig.controller->logExposure());
            QCoreApplication::processEvents(); // the permission check answers
            CameraFrame frame = greyFrame();
            frame.image.fill(colour);
            rig.device->pushFrame(frame);
        }
        QCOMPARE(fixes.size(), 2);
        for (const auto& fix : fixes) {
            fix->addResult(QVariantMap());
            fix->finish();
        }
        QTRY_VERIFY(logged.at(0).isFinished() && logged.at(1).isFinished());
        const auto assets =
            rig.library.fetchAssets(*rig.library.fetchAlbum(PhotoAlbum::kAlbumTitle));
        QCOMPARE(assets.size(), 2);
        QSet<QRgb> colours;
        for (const PhotoLibraryAsset& asset : assets)
            colours.insert(QImage::fromData(rig.library.storedDataReader(asset)()).pixel(0, 0));
        QCOMPARE(colours.size(), 2);
        QVERIFY(colours.contains(qRgb(0, 0, 0)) && colours.contains(qRgb(255, 255, 255)));
    }

    void aSecondLogBeforeTheFrameReplacesTheFirst()
    {
        Rig rig;
        rig.start();
        QFuture<void> first = rig.controller->logExposure();
        QCoreApplication::processEvents();
        QFuture<void> second = rig.controller->logExposure();
        QCoreApplication::processEvents();
        rig.device->pushFrame(greyFrame());
        QTRY_VERIFY(second.isFinished());
        second.waitForFinished();
        rig.device->pushFrame(greyFrame()); // no capture pending any more
        QCoreApplication::processEvents();
        QVERIFY(!first.isFinished());
        const auto album = rig.library.fetchAlbum(PhotoAlbum::kAlbumTitle);
        QCOMPARE(rig.library.fetchAssets(*album).size(), 1);
    }

private:
    static QStringList temporaryFiles()
    {
        return QDir::temp().entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_temp;
};

QTEST_MAIN(CameraControllerTest)
#include "tst_cameracontroller.moc"
