#include "camera/anycameracontroller.h"
#include "camera/cameracontrollererror.h"
#include "camera/mockcameracontroller.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace kestrum;

namespace {
QStringList titles(const QList<ZoomOption>& options)
{
    QStringList out;
    for (const ZoomOption& o : options)
        out.append(o.title);
    return out;
}
} // namespace

class MockCameraControllerTest : public QObject {
    Q_OBJECT

private slots:
    void presetsBySimulatedDevice_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("triple camera") << "iPhone14,3" << QStringList{"0.5", "1", "3"};
        QTest::newRow("dual camera") << "iPhone10,5" << QStringList{"1", "2"};
        QTest::newRow("tablet with ultra-wide") << "iPad13,10" << QStringList{"0.5", "1"};
        QTest::newRow("tablet") << "iPad7,1" << QStringList{"1"};
        QTest::newRow("unknown device") << "Pixel" << QStringList{"1"};
        QTest::newRow("no device") << "" << QStringList{"1"};
    }

    void presetsBySimulatedDevice()
    {
        QFETCH(QString, model);
        QFETCH(QStringList, titles);
        const MockCameraController mock(AuthorizationStatus::authorized,
                                        model.isEmpty() ? std::nullopt : std::optional(model),
                                        false);
        QCOMPARE(::titles(mock.zoomOptions()), titles);
        // The current option is the factor-2 preset whatever the device.
        QCOMPARE(mock.currentZoomOption()->factor, 2.0f);
        QCOMPARE(mock.currentZoomOption()->activeTitle, u"1×"_qs);
    }

    void unknownDeviceStopsAScreenshotRun()
    {
        if (qEnvironmentVariableIsSet("KESTRUM_MOCK_PROBE")) {
            MockCameraController(AuthorizationStatus::authorized, QStringLiteral("iPhone99,9"),
                                 true);
            return; // never reached when the device is refused
        }
        QProcess probe;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KESTRUM_MOCK_PROBE", "1");
        probe.setProcessEnvironment(environment);
        probe.start(QCoreApplication::applicationFilePath(), {"unknownDeviceStopsAScreenshotRun"});
        QVERIFY(probe.waitForFinished(30000));
        QVERIFY(probe.exitStatus() == QProcess::CrashExit || probe.exitCode() != 0);
        // Qt Test reports the fatal message on stdout, a bare program on stderr.
        const QByteArray output = probe.readAllStandardOutput() + probe.readAllStandardError();
        QVERIFY(output.contains("Unsupported Simulator Device"));
    }

    void boxForwardsToTheController()
    {
        auto mock = std::make_shared<MockCameraController>(AuthorizationStatus::authorized,
                                                           QStringLiteral("iPhone14,3"), false);
        AnyCameraController box(mock);
        QSignalSpy willChange(&box, &AnyCameraController::objectWillChange);
        box.setCurrentZoomOption(mock->zoomOptions().first());
        QCOMPARE(mock->currentZoomOption()->title, "0.5");
        box.setInteractiveZoomFactor(1.7f);
        QCOMPARE(mock->interactiveZoomFactor(), 1.7f);
        QCOMPARE(willChange.size(), 2);
        // The box keeps the metadata provider it was built with; a new one goes to the controller.
        QVERIFY(!box.getMetadata());
        box.setGetMetadata([] { return QtFuture::makeReadyFuture(QVariantMap{{"a", 1}}); });
        QVERIFY(mock->getMetadata());
        QVERIFY(!box.getMetadata());
    }

    // The other texts are met in tst_cameracontroller's set-up and logging failures.
    void errorTexts_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("text");
        QTest::newRow("input") << int(CameraControllerError::inputCantBeCreated)
                               << "Unable to create capture input.";
        QTest::newRow("unknown keeps its spelling")
            << int(CameraControllerError::unknown) << "Unknown error occured.";
    }

    void errorTexts()
    {
        QFETCH(int, error);
        const CameraControllerException exception(static_cast<CameraControllerError>(error));
        QTEST(QString::fromUtf8(exception.what()), "text");
    }
};

QTEST_GUILESS_MAIN(MockCameraControllerTest)
#include "tst_mockcameracontroller.moc"
