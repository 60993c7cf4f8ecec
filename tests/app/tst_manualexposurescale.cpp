#include "app/manualexposurescale.h"

#include <QTest>

using namespace kestrum;

using Error = std::optional<ExposureError>;

// A scale of 13 entries (−3 to +3 stops in halves): 208 points wide, ±104 from its centre.
class ManualExposureScaleTest : public QObject {
    Q_OBJECT

private slots:
    void markerOffset_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<double>("offset");
        QTest::newRow("first entry") << 0 << -96.0;
        QTest::newRow("middle entry") << 6 << 0.0;
        QTest::newRow("one past the middle") << 7 << 16.0;
        QTest::newRow("last entry") << 12 << 96.0;
    }

    void markerOffset()
    {
        QFETCH(int, index);
        QTEST(ManualExposureScale(13).markerOffset(index), "offset");
    }

    void error_data()
    {
        QTest::addColumn<Error>("error");
        QTest::addColumn<ManualExposureScale::MarkerState>("state");
        QTest::addColumn<std::optional<double>>("markOffset");
        QTest::newRow("no error") << Error() << ManualExposureScale::MarkerState::normal
                                  << std::optional<double>();
        QTest::newRow("overexposed: right")
            << Error(ExposureError::overexposed) << ManualExposureScale::MarkerState::error
            << std::optional(114.0);
        QTest::newRow("underexposed: left")
            << Error(ExposureError::underexposed) << ManualExposureScale::MarkerState::error
            << std::optional(-114.0);
    }

    void error()
    {
        QFETCH(Error, error);
        QTEST(ManualExposureScale::markerState(error), "state");
        QTEST(ManualExposureScale(13).errorMarkOffset(error), "markOffset");
    }
};

QTEST_GUILESS_MAIN(ManualExposureScaleTest)
#include "tst_manualexposurescale.moc"
