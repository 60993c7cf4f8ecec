#include "app/compensationstepper.h"
#include "exposure/exposurecomponent.h"

#include <QTest>

using namespace kestrum;

class CompensationStepperTest : public QObject {
    Q_OBJECT

private slots:
    void stepper_data()
    {
        QTest::addColumn<std::optional<int>>("current");
        QTest::addColumn<bool>("plusEnabled");
        QTest::addColumn<bool>("minusEnabled");
        QTest::addColumn<std::optional<int>>("plus");
        QTest::addColumn<std::optional<int>>("minus");
        const std::optional<int> none;
        QTest::newRow("middle") << std::optional(2) << true << true << std::optional(3)
                                << std::optional(1);
        QTest::newRow("first") << std::optional(0) << true << false << std::optional(1) << none;
        QTest::newRow("last") << std::optional(4) << false << true << none << std::optional(3);
        QTest::newRow("not in the list: minus on, doing nothing")
            << none << false << true << none << none;
    }

    void stepper()
    {
        QFETCH(std::optional<int>, current);
        const CompensationStepper stepper{current, 5};
        QTEST(stepper.incrementEnabled(), "plusEnabled");
        QTEST(stepper.decrementEnabled(), "minusEnabled");
        QTEST(stepper.incremented(), "plus");
        QTEST(stepper.decremented(), "minus");
    }

    void differsFromDefault_data()
    {
        QTest::addColumn<double>("current");
        QTest::addColumn<std::optional<double>>("defaultValue");
        QTest::addColumn<bool>("differs");
        QTest::newRow("no default") << 1.0 << std::optional<double>() << false;
        QTest::newRow("at the default") << 0.0 << std::optional(0.0) << false;
        QTest::newRow("off the default") << 0.5 << std::optional(0.0) << true;
    }

    void differsFromDefault()
    {
        QFETCH(double, current);
        QFETCH(std::optional<double>, defaultValue);
        const auto compensation = [](double stops) {
            return Compensation{Fraction::half, stops, QString::number(stops)};
        };
        const std::optional<Compensation> defaultEntry =
            defaultValue ? std::optional(compensation(*defaultValue)) : std::nullopt;
        QTEST(kestrum::differsFromDefault(compensation(current), defaultEntry), "differs");
    }
};

QTEST_GUILESS_MAIN(CompensationStepperTest)
#include "tst_compensationstepper.moc"
