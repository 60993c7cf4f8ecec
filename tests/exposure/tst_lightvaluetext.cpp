#include "exposure/lightvalue.h"

#include <QTest>

class LightValueTextTest : public QObject {
    Q_OBJECT

private slots:
    void readsOneDecimal_data()
    {
        QTest::addColumn<double>("lightValue");
        QTest::addColumn<QString>("text");

        QTest::newRow("sunny sixteen") << 14.9658 << "LV 15.0";
        QTest::newRow("rounds down") << 12.34 << "LV 12.3";
        QTest::newRow("half a tenth rounds up") << 12.25 << "LV 12.3";
        QTest::newRow("zero") << 0.0 << "LV 0.0";
        QTest::newRow("no negative zero") << -0.04 << "LV 0.0";
        QTest::newRow("true minus sign") << -1.5 << QStringLiteral("LV \u22121.5");
        QTest::newRow("deep night") << -6.96 << QStringLiteral("LV \u22127.0");
    }
    void readsOneDecimal()
    {
        QFETCH(double, lightValue);
        QFETCH(QString, text);
        QCOMPARE(kestrum::lightValueText(lightValue), text);
    }
};

QTEST_GUILESS_MAIN(LightValueTextTest)
#include "tst_lightvaluetext.moc"
