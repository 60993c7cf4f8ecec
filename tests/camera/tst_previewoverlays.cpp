#include "camera/facebox.h"
#include "camera/faceoutlinevisibility.h"
#include "camera/previewfill.h"
#include "camera/tapmarker.h"
#include "support/manualclock.h"

#include <QList>
#include <QTest>

using namespace kestrum;

namespace {

// At `atMs`: a tap at `point`, a face (`face`), or else a change of the subject area.
struct Event {
    qint64 atMs = 0;
    std::optional<QPointF> point;
    bool face = false;
};

Event tapAt(qint64 atMs, QPointF point)
{
    return {atMs, point, false};
}
Event faceAt(qint64 atMs)
{
    return {atMs, std::nullopt, true};
}
Event areaChangeAt(qint64 atMs)
{
    return {atMs, std::nullopt, false};
}

} // namespace

Q_DECLARE_METATYPE(QList<Event>)

// A 1080 × 1440 picture in a 540 × 1440 view (full size, 270 points cut off each side) or
// in a 360 × 480 view (a third of its size, nothing cut off).
class PreviewOverlaysTest : public QObject {
    Q_OBJECT

private slots:
    void tap_data()
    {
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<QPointF>("viewPoint");
        QTest::addColumn<QPointF>("devicePoint");
        QTest::newRow("cut off, corner") << QSizeF(540, 1440) << QPointF(0, 0) << QPointF(0.25, 0);
        QTest::newRow("cut off, inside")
            << QSizeF(540, 1440) << QPointF(270, 360) << QPointF(0.5, 0.25);
        QTest::newRow("scaled by 2, cut off top and bottom")
            << QSizeF(2160, 1440) << QPointF(0, 0) << QPointF(0, 0.25);
        QTest::newRow("a third") << QSizeF(360, 480) << QPointF(90, 120) << QPointF(0.25, 0.25);
    }

    void tap()
    {
        QFETCH(QSizeF, view);
        QFETCH(QPointF, viewPoint);
        QFETCH(QPointF, devicePoint);
        const PreviewFill fill(FaceBox::kReferenceFrame, view);
        QCOMPARE(fill.devicePoint(viewPoint), devicePoint);
        QCOMPARE(fill.viewPoint(devicePoint), viewPoint);
    }

    void face_data()
    {
        QTest::addColumn<QRectF>("normalized");
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<QRectF>("inView");
        QTest::addColumn<QPointF>("metersAt");
        // Observed (0.25, 0.25, 0.5, 0.25) is (0.5, 0.25, 0.25, 0.5) in the picture: from
        // the frame's top a quarter down, from its right edge a quarter in. In the reference
        // that is (540, 360, 270, 720).
        const QRectF middle(0.25, 0.25, 0.5, 0.25);
        QTest::newRow("a third") << middle << QSizeF(360, 480) << QRectF(180, 120, 90, 240)
                                 << QPointF(0.625, 0.5);
        QTest::newRow("cut off") << middle << QSizeF(540, 1440) << QRectF(270, 360, 270, 720)
                                 << QPointF(0.625, 0.5);
        QTest::newRow("observed origin is the top-right corner")
            << QRectF(0, 0, 0.1, 0.1) << QSizeF(360, 480) << QRectF(324, 0, 36, 48)
            << QPointF(0.95, 0.05);
    }

    void face()
    {
        QFETCH(QRectF, normalized);
        QFETCH(QSizeF, view);
        const PreviewFill fill(FaceBox::kReferenceFrame, view);
        QTEST(FaceBox(normalized).inView(fill.frameRect()), "inView");
        QTEST(FaceBox(normalized).meteringPoint(), "metersAt");
    }

    void cornerRadius()
    {
        QCOMPARE(FaceBox(QRectF(0.25, 0.25, 0.5, 0.25)).inReference(), QRectF(540, 360, 270, 720));
        QCOMPARE(FaceBox::cornerRadius(QRectF(10, 20, 200, 300)), 25.0);
    }

    void timers_data()
    {
        QTest::addColumn<QList<Event>>("events");
        QTest::addColumn<qint64>("atMs");
        QTest::addColumn<TapMarker::Phase>("marker");
        QTest::addColumn<QRectF>("markerRect");
        QTest::addColumn<bool>("outline");
        using P = TapMarker::Phase;
        const Event tap = tapAt(0, QPointF(100, 200));
        const QRectF first(70, 170, 60, 60);
        const QRectF second(270, 370, 60, 60);
        const QList<Event> twoTaps{tap, tapAt(1000, QPointF(300, 400))};
        QTest::newRow("tap: shown") << QList{tap} << qint64(1999) << P::shown << first << false;
        QTest::newRow("tap: fading at 2.0 s")
            << QList{tap} << qint64(2000) << P::fading << first << false;
        QTest::newRow("tap: gone at 2.3 s")
            << QList{tap} << qint64(2300) << P::hidden << first << false;
        QTest::newRow("second tap restarts")
            << twoTaps << qint64(2999) << P::shown << second << false;
        QTest::newRow("subject area change removes at once")
            << QList<Event>{tap, areaChangeAt(500)} << qint64(500) << P::hidden << first << false;
        QTest::newRow("a removed marker's timers are dropped")
            << QList<Event>{tap, areaChangeAt(500), tapAt(1000, QPointF(300, 400))} << qint64(2100)
            << P::shown << second << false;
        QTest::newRow("faces keep the outline up and leave the marker")
            << QList<Event>{tap, faceAt(1000), faceAt(1400)} << qint64(1899) << P::shown << first
            << true;
        QTest::newRow("outline gone 0.5 s after the last face")
            << QList<Event>{faceAt(0), faceAt(300)} << qint64(800) << P::hidden << first << false;
    }

    void timers()
    {
        QFETCH(QList<Event>, events);
        QFETCH(qint64, atMs);
        ManualClock clock;
        TapMarker marker(clock);
        FaceOutlineVisibility outline(clock);
        for (const Event& event : events) {
            clock.advance(event.atMs - clock.nowMs());
            if (event.point)
                marker.tap(*event.point);
            else if (event.face)
                outline.faceSeen();
            else
                marker.subjectAreaChanged();
        }
        clock.advance(atMs - clock.nowMs());
        QTEST(marker.phase(), "marker");
        QTEST(outline.visible(), "outline");
        if (marker.phase() != TapMarker::Phase::hidden)
            QTEST(marker.rect(), "markerRect");
    }
};

QTEST_GUILESS_MAIN(PreviewOverlaysTest)
#include "tst_previewoverlays.moc"
