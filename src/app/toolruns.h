#pragma once

#include <QPointF>
#include <QString>

class QElapsedTimer;
class QQuickWindow;

namespace kestrum {

class CalculationController;

/// Runs of the app made by tools rather than people: pictures of the window for the
/// documentation and the screenshot tests, and the start-up benchmark's finish line.

/// Taps the window at `point` (window coordinates) after `delayMs`, as a finger would.
void tapAfter(QQuickWindow& window, QPointF point, int delayMs);

/// Saves a picture of `window` to `path` after `delayMs` and quits; the exit status says
/// whether the picture was saved.
void takeScreenshot(QQuickWindow& window, const QString& path, int delayMs);

/// Quits once a frame showing the meter's first computed reading is on screen, printing
/// "first reading after N ms" (since `sinceStart` began).
void quitAfterFirstReading(QQuickWindow& window, const CalculationController& meter,
                           const QElapsedTimer& sinceStart);

} // namespace kestrum
