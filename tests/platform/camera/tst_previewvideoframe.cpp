#include "platform/camera/previewvideoframe.h"

#include <QTest>

using namespace kestrum;

// Camera frames as the preview's VideoOutput gets them.
class PreviewVideoFrameTest : public QObject {
    Q_OBJECT

private slots:
    void keepsPixelsAndTurn_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<CameraFrame::Orientation>("orientation");
        QTest::addColumn<QVideoFrameFormat::PixelFormat>("pixelFormat");
        QTest::addColumn<QVideoFrame::RotationAngle>("rotation");
        QTest::newRow("rgb32, upright")
            << QImage::Format_RGB32 << CameraFrame::Orientation::up
            << QVideoFrameFormat::Format_BGRX8888 << QVideoFrame::Rotation0;
        QTest::newRow("rgba, phone sensor")
            << QImage::Format_RGBA8888 << CameraFrame::Orientation::right
            << QVideoFrameFormat::Format_RGBA8888 << QVideoFrame::Rotation90;
        QTest::newRow("grey, upside down")
            << QImage::Format_Grayscale8 << CameraFrame::Orientation::down
            << QVideoFrameFormat::Format_Y8 << QVideoFrame::Rotation180;
        QTest::newRow("rgb888, left") // no 24-bit video format: made 32-bit RGB
            << QImage::Format_RGB888 << CameraFrame::Orientation::left
            << QVideoFrameFormat::Format_BGRX8888 << QVideoFrame::Rotation270;
    }

    void keepsPixelsAndTurn()
    {
        QFETCH(QImage::Format, format);
        QFETCH(CameraFrame::Orientation, orientation);
        QFETCH(QVideoFrameFormat::PixelFormat, pixelFormat);
        QFETCH(QVideoFrame::RotationAngle, rotation);
        // Odd width: rows of different byte lengths in image and frame must not shear.
        QImage image(QSize(37, 20), QImage::Format_RGB32);
        image.fill(Qt::black);
        image.setPixelColor(3, 2, QColor(255, 255, 255));
        image.setPixelColor(36, 19, QColor(128, 128, 128));
        const QImage picture = image.convertToFormat(format);

        const QVideoFrame video = previewVideoFrame({picture, std::nullopt, orientation});

        QCOMPARE(video.pixelFormat(), pixelFormat);
        QCOMPARE(video.size(), QSize(37, 20));
        QCOMPARE(video.rotationAngle(), rotation);
        QVideoFrame pixels = video; // the pixels as stored, before the output turns them
        pixels.setRotationAngle(QVideoFrame::Rotation0);
        const QImage shown = pixels.toImage();
        QCOMPARE(shown.pixelColor(3, 2), QColor(255, 255, 255));
        QCOMPARE(shown.pixelColor(36, 19), QColor(128, 128, 128));
        QCOMPARE(shown.pixelColor(4, 2), QColor(0, 0, 0));
    }

    void nullImageClearsTheOutput() { QVERIFY(!previewVideoFrame({}).isValid()); }
};

QTEST_MAIN(PreviewVideoFrameTest)
#include "tst_previewvideoframe.moc"
