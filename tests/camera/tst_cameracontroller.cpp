#include "camera/cameracontroller.h"

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

using namespace kestrum;
using Kind = CaptureDevice::Kind;
using Readouts = FakeCaptureDevice::Readouts;
namespace key = imageproperty;

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(AuthorizationStatus)
Q_DECLARE_METATYPE(FakeCaptureDevice::Readouts)
Q_DECLARE_METATYPE(FakeCaptureDevice::Failing)

namespace {

// A controller on a fake device, with an album on a library in memory. Each capture asks
// for the metadata (`properties`) as its frame arrives.
struct Rig {
    Rig()
    {
        auto fake = std::make_unique<FakeCaptureDevice>();
        device = fake.get();
        controller = std::make_unique<CameraController>(
            std::move(fake), [this] { return &album; }, metadata,
            [this](const CameraFrame& frame) { consumed.append(frame); });
        controller->setGetMetadata([this] {
            ++captures;
            return QtFuture::makeReadyFuture(properties);
        });
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
    /// Asks to log; the permission check has answered when this returns.
    QFuture<void> log()
    {
        QFuture<void> logged = controller->logExposure();
        QCoreApplication::processEvents();
        return logged;
    }
    qsizetype photosInAlbum() const
    {
        const auto found = library.fetchAlbum(PhotoAlbum::kAlbumTitle);
        return found ? library.fetchAssets(*found).size() : 0;
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
    ImageProperties properties;
    int captures = 0;
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

// Why `future` failed; nothing if it did not.
QString failureText(QFuture<void> future)
{
    try {
        future.waitForFinished();
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
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

    // After the seed 0, each reading is measured in turn and passes when its tenth is new
    // (the filter itself is tst_lightvaluestream's); a camera without a reading gives 0.
    void lightValueFollowsTheReadouts_data()
    {
        QTest::addColumn<bool>("setUp");
        QTest::addColumn<QList<Readouts>>("readings");
        QTest::addColumn<QList<double>>("heard");
        // At 1 s and f/1 the offset is the light value at ISO 100.
        const auto offset = [](float ev, float iso = 100) { return Readouts{iso, 1, 1, ev}; };
        QTest::newRow("sunny sixteen")
            << true << QList<Readouts>{{100, 1 / 125.f, 16, 0}} << QList<double>{14.9658};
        QTest::newRow("indoors, offset")
            << true << QList<Readouts>{{800, 1 / 30.f, 1.8f, -0.66f}} << QList<double>{2.9429};
        QTest::newRow("no offset counts as on target")
            << true << QList<Readouts>{{200, 0.5f, 4, std::nullopt}} << QList<double>{4.0};
        QTest::newRow("same tenth")
            << true << QList<Readouts>{offset(8.04f), offset(8.07f)} << QList<double>{8.04};
        QTest::newRow("ISO 0 gives 0")
            << true << QList<Readouts>{offset(5), offset(5, 0)} << QList<double>{5.0, 0.0};
        QTest::newRow("no exposure time gives 0")
            << true << QList<Readouts>{offset(5), {400, std::nullopt, 2, 0}}
            << QList<double>{5.0, 0.0};
        QTest::newRow("no camera before set-up")
            << false << QList<Readouts>{offset(7)} << QList<double>{};
    }

    void lightValueFollowsTheReadouts()
    {
        QFETCH(bool, setUp);
        QFETCH(QList<Readouts>, readings);
        QFETCH(QList<double>, heard);
        Rig rig;
        if (setUp)
            rig.start();
        QCOMPARE(rig.listen(), QList<double>{0.0}); // the seed
        for (const Readouts& readouts : readings) {
            rig.device->setReadouts(readouts);
            rig.controller->measure();
        }
        const QList<double> passed = rig.heard.mid(1);
        QCOMPARE(passed.size(), heard.size());
        for (qsizetype i = 0; i < heard.size(); ++i)
            QVERIFY2(std::fabs(passed[i] - heard[i]) < 1e-4,
                     qPrintable(QString::number(passed[i])));
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
        const QStringList reset{"lock", QStringLiteral("ramp %1 at 6").arg(oneTimesFactor),
                                "unlock"};
        QCOMPARE(rig.lastCalls(3), reset);
        // So does every later start; stopping leaves the zoom alone.
        const ZoomOption last = rig.controller->zoomOptions().last();
        rig.controller->setCurrentZoomOption(last);
        rig.device->setRunning(false);
        QTRY_VERIFY(!rig.controller->sessionIsRunning());
        QCOMPARE(rig.zoom(), last);
        rig.device->setRunning(true);
        QTRY_COMPARE(rig.zoom().factor, oneTimesFactor);
        QCOMPARE(rig.lastCalls(3), reset);
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

    // Steps of a tenth of the shown zoom, from 1× up to shown 10× or the device's maximum.
    void zoomStepsAndClamps_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<float>("max");
        QTest::addColumn<QString>("firstStep");
        QTest::addColumn<float>("top");
        QTest::addColumn<QString>("topTitle");
        QTest::newRow("single lens")
            << Kind::wideAngle << 100.0f << "ramp 1.1 at 6" << 10.0f << "10×";
        QTest::newRow("single lens, device maximum 4")
            << Kind::wideAngle << 4.0f << "ramp 1.1 at 6" << 4.0f << "4×";
        QTest::newRow("triple") << Kind::triple << 100.0f << "ramp 2.2 at 6" << 20.0f << "10×";
        QTest::newRow("dual does not halve")
            << Kind::dual << 100.0f << "ramp 1.1 at 6" << 10.0f << "10×";
    }

    void zoomStepsAndClamps()
    {
        QFETCH(Kind, kind);
        QFETCH(float, max);
        QFETCH(QString, firstStep);
        QFETCH(float, top);
        QFETCH(QString, topTitle);
        Rig rig;
        rig.start(kind, max);
        QCOMPARE(rig.controller->clampZoomFactor(1000.0f), top);
        QCOMPARE(rig.controller->clampZoomFactor(0.4f), 1.0f);
        rig.controller->incrementZoom();
        QCOMPARE(rig.zoom().activeTitle, "1.1×");
        QCOMPARE(rig.lastCalls(3), (QStringList{"lock", firstStep, "unlock"}));
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
        QTest::addColumn<float>("halvedAfter"); // a second pinch of 0.5, clamped
        QTest::newRow("single lens") << Kind::wideAngle << 1.7f << 1.7f << 1.0f;
        QTest::newRow("triple, over the 1× lens") << Kind::triple << 1.7f << 3.4f << 1.7f;
        QTest::newRow("beyond shown 10") << Kind::triple << 12.0f << 20.0f << 10.0f;
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
        QTEST(rig.zoom().factor, "halvedAfter");
    }

    void setUpFailures_data()
    {
        using enum FakeCaptureDevice::Failing;
        QTest::addColumn<FakeCaptureDevice::Failing>("failing");
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("hasSession");
        QTest::newRow("no session") << session << "Unable to create capture session." << false;
        QTest::newRow("no camera") << camera << "No camera device found." << true;
        QTest::newRow("input refused, for the platform's reason")
            << createInput << "/dev/video0: Permission denied" << true;
        QTest::newRow("input not added") << addInput << "Unable to add capture input." << true;
        QTest::newRow("output not added") << addOutput << "Unable to add capture output." << true;
    }

    void setUpFailures()
    {
        QFETCH(FakeCaptureDevice::Failing, failing);
        QFETCH(bool, hasSession);
        Rig rig;
        rig.device->setFailing(failing);
        try {
            rig.controller->setUp();
            QFAIL("set-up succeeded");
        } catch (const std::exception& thrown) {
            QTEST(QString::fromUtf8(thrown.what()), "error");
        }
        QCOMPARE(rig.controller->session() != nullptr, hasSession); // nothing is rolled back
        rig.device->pushFrame(greyFrame());
        QVERIFY(rig.consumed.isEmpty());
        // Nothing was started: once the device works, a set-up starts it exactly once.
        rig.device->setFailing(FakeCaptureDevice::Failing::nothing);
        rig.start();
        QCOMPARE(rig.device->startCount(), 1);
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
        rig.device->setReadouts({100, 1, 1, 4.5f});
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
        Rig rig;
        rig.device->setAuthorization(AuthorizationStatus::denied); // changed in the settings
        emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        QCOMPARE(rig.controller->authorizationStatus(), AuthorizationStatus::authorized);
        emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        QCOMPARE(rig.controller->authorizationStatus(), AuthorizationStatus::denied);
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
        rig.properties = {
            {key::kExifDictionary, QVariantMap{{key::kISOSpeedRatings, QVariantList{400}},
                                               {key::kFNumber, 2.8},
                                               {key::kExposureTime, 0.004}}}};
        QFuture<void> logged = rig.log();
        QCOMPARE(rig.captures, 0); // nothing happens before the next frame
        CameraFrame frame = greyFrame();
        frame.orientation = orientation;
        rig.device->pushFrame(frame);
        QTRY_VERIFY(logged.isFinished());
        logged.waitForFinished(); // rethrows a failure
        QCOMPARE(rig.captures, 1);
        const QList<PhotoLibraryAsset> assets =
            rig.library.fetchAssets(*rig.library.fetchAlbum(PhotoAlbum::kAlbumTitle));
        QCOMPARE(assets.size(), 1);
        QTRY_COMPARE(temporaryFiles(), QStringList()); // the photo's own file is gone again

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

    // A failed log says why; without permission no frame is even taken.
    void loggingFailures_data()
    {
        QTest::addColumn<bool>("permitted");
        QTest::addColumn<bool>("imageInFrame");
        QTest::addColumn<QString>("error"); // with both, the library refuses the photo
        QTest::newRow("album permission refused")
            << false << true << "no permission to use the photo library";
        QTest::newRow("frame without an image") << true << false << "Capture failed.";
        QTest::newRow("library refuses the photo")
            << true << true << "the photo could not be stored";
    }

    void loggingFailures()
    {
        QFETCH(bool, permitted);
        QFETCH(bool, imageInFrame);
        Rig rig;
        rig.start();
        if (!permitted)
            rig.library.setAuthorizationStatus(PhotoLibraryAuthorization::denied);
        else if (!imageInFrame)
            QTest::ignoreMessage(QtWarningMsg, "Capture failed: the frame has no image");
        else
            rig.library.setAssetCreationError(PhotoLibrary::Error::writeFailed);
        QFuture<void> logged = rig.log();
        rig.device->pushFrame(imageInFrame ? greyFrame() : CameraFrame{});
        QCOMPARE(rig.captures, permitted ? 1 : 0);
        QTRY_VERIFY(logged.isFinished());
        QTEST(failureText(logged), "error");
        QTRY_COMPARE(temporaryFiles(), QStringList());
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
        const QFuture<void> first = rig.log();
        QFuture<void> second = rig.log();
        rig.device->pushFrame(greyFrame());
        rig.device->pushFrame(greyFrame()); // no capture pending any more
        QCOMPARE(rig.captures, 1);
        QTRY_VERIFY(second.isFinished());
        second.waitForFinished();
        QVERIFY(!first.isFinished()); // replaced, never resumed
        QCOMPARE(rig.photosInAlbum(), 1);
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
