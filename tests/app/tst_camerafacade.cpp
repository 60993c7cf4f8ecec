#include "album/photoalbum.h"
#include "app/camerafacade.h"
#include "camera/anycameracontroller.h"
#include "camera/cameracontroller.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "support/fakecapturedevice.h"
#include "support/fakephotolibrary.h"
#include "support/queuedcalls.h"

#include <QSignalSpy>
#include <QTest>
#include <QVideoFrame>
#include <QVideoSink>

using namespace kestrum;

namespace {

// The live camera on a fake device, seen through the facade.
struct Rig {
    Rig()
    {
        auto fake = std::make_unique<FakeCaptureDevice>();
        device = fake.get();
        camera = std::make_unique<AnyCameraController>(std::make_shared<CameraController>(
            std::move(fake), [this] { return &album; }, metadata, nullptr));
        facade = std::make_unique<CameraFacade>(*camera);
    }

    void pushFrame(QSize size = {40, 30})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGray);
        device->pushFrame({image, std::nullopt, CameraFrame::Orientation::right});
    }

    FakePhotoLibrary library;
    Exiv2ImageMetadata metadata;
    PhotoAlbum album{library, metadata};
    FakeCaptureDevice* device = nullptr;
    std::unique_ptr<AnyCameraController> camera;
    std::unique_ptr<CameraFacade> facade;
};

} // namespace

Q_DECLARE_METATYPE(FakeCaptureDevice::Failing)

class CameraFacadeTest : public QObject {
    Q_OBJECT

private slots:
    void setUpReportsWhatFailed_data()
    {
        using enum FakeCaptureDevice::Failing;
        using E = CameraFacade::Error;
        QTest::addColumn<FakeCaptureDevice::Failing>("failing");
        QTest::addColumn<CameraFacade::Error>("error");
        QTest::addColumn<QString>("text");
        QTest::newRow("session") << session << E::SessionCantBeCreated
                                 << "Unable to create capture session.";
        QTest::newRow("camera") << camera << E::NoCameraDevice << "No camera device found.";
        QTest::newRow("input") << addInput << E::InputCantBeAdded << "Unable to add capture input.";
        QTest::newRow("output") << addOutput << E::OutputCantBeAdded
                                << "Unable to add capture output.";
    }

    void setUpReportsWhatFailed()
    {
        QFETCH(FakeCaptureDevice::Failing, failing);
        Rig rig;
        rig.device->setFailing(failing);
        QVERIFY(!rig.facade->setUp());
        QTEST(rig.facade->setUpError(), "error");
        QTEST(rig.facade->setUpErrorText(), "text");
    }

    void previewShowsTheSessionsFrames()
    {
        Rig rig;
        QVideoSink sink;
        rig.facade->setVideoSink(&sink);
        QSignalSpy shown(&sink, &QVideoSink::videoFrameChanged);
        rig.pushFrame(); // no session yet: nothing to show
        QVERIFY(rig.facade->setUp());
        QCOMPARE(shown.count(), 0);

        rig.pushFrame({40, 30});

        QCOMPARE(shown.count(), 1);
        QCOMPARE(sink.videoFrame().size(), QSize(40, 30));
        QCOMPARE(sink.videoFrame().rotationAngle(), QVideoFrame::Rotation90);
    }

    // Success on the mock camera is tst_camera.qml's.
    void failedLogTellsWhy()
    {
        Rig rig;
        rig.library.setAuthorizationStatus(PhotoLibraryAuthorization::denied);
        QVERIFY(rig.facade->setUp());
        QSignalSpy logged(rig.facade.get(), &CameraFacade::exposureLogged);

        rig.facade->logExposure();
        finishQueuedCalls(); // the album's answer arms the capture
        rig.pushFrame();

        QVERIFY(!logged.isEmpty() || logged.wait());
        QCOMPARE(logged.at(0).at(0).toBool(), false);
        QCOMPARE(logged.at(0).at(1).toString(), "no permission to use the photo library");
    }
};

QTEST_MAIN(CameraFacadeTest)
#include "tst_camerafacade.moc"
