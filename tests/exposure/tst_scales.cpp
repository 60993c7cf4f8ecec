#include "exposure/scale.h"

#include <QSet>
#include <QTest>

using namespace kestrum;

namespace {

template <typename C> QStringList displays(const std::vector<C>& entries)
{
    QStringList out;
    for (const C& e : entries)
        out.append(e.display);
    return out;
}

// Ascending (or descending) with no value twice; failures name the scale.
template <typename C> void verifyMergedScale(Fraction fraction, std::size_t expectedSize)
{
    const auto& entries = scale<C>(fraction);
    const QString where = rawValue(fraction) + u' ' +
                          (entries.empty() ? QString() : entries.front().description()) + u' ';
    QVERIFY2(entries.size() == expectedSize, qPrintable(where + QString::number(entries.size())));
    QSet<double> values;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        values.insert(entries[i].value);
        if (i > 0)
            QVERIFY2(C::scaleDescending ? entries[i - 1].value > entries[i].value
                                        : entries[i - 1].value < entries[i].value,
                     qPrintable(where + entries[i].display));
    }
    QVERIFY2(std::size_t(values.size()) == expectedSize, qPrintable(where + "repeats a value"));
}

QString nearestAperture(double target)
{
    return nearestEntry<Aperture>(scale<Aperture>(Fraction::full), target).display;
}

} // namespace

class ScalesTest : public QObject {
    Q_OBJECT

private slots:
    void mergedScaleSizesAndOrder()
    {
        verifyMergedScale<Aperture>(Fraction::full, 13);
        verifyMergedScale<Aperture>(Fraction::half, 25);
        verifyMergedScale<Aperture>(Fraction::third, 37);
        verifyMergedScale<ShutterSpeed>(Fraction::full, 19);
        verifyMergedScale<ShutterSpeed>(Fraction::half, 37);
        verifyMergedScale<ShutterSpeed>(Fraction::third, 55);
        verifyMergedScale<ISO>(Fraction::full, 10);
        verifyMergedScale<ISO>(Fraction::half, 19);
        verifyMergedScale<ISO>(Fraction::third, 28);
        verifyMergedScale<Compensation>(Fraction::full, 14);
        verifyMergedScale<Compensation>(Fraction::half, 27);
        verifyMergedScale<Compensation>(Fraction::third, 40);
    }

    void stepTexts()
    {
        QCOMPARE(fractionOrFull(u"full"_qs), Fraction::full);
        QCOMPARE(fractionOrFull(u"half"_qs), Fraction::half);
        QCOMPARE(fractionOrFull(u"third"_qs), Fraction::third);
        QCOMPARE(fractionOrFull(u"quarter"_qs), Fraction::full);
        QCOMPARE(fractionOrFull(u"Half"_qs), Fraction::full); // case matters
        QCOMPARE(fractionOrFull(std::nullopt), Fraction::full);
    }

    void thirdApertureScaleBegins()
    {
        const auto& third = scale<Aperture>(Fraction::third);
        const std::vector<Aperture> start(third.begin(), third.begin() + 5);
        const std::vector<Aperture> expected = {{Fraction::full, 0.7071, "0.7"},
                                                {Fraction::third, 0.7937, "0.8"},
                                                {Fraction::third, 0.8909, "0.9"},
                                                {Fraction::full, 1.0, "1"},
                                                {Fraction::third, 1.122, "1.1"}};
        QCOMPARE(start, expected);
        for (const Aperture& a : third)
            QVERIFY(a.value != 0.8409);
    }

    void thirdCompensationScaleIsSortedAroundZero()
    {
        const auto texts = displays(scale<Compensation>(Fraction::third));
        const auto zero = texts.indexOf(QStringLiteral("0"));
        QCOMPARE(texts.mid(zero - 1, 5),
                 (QStringList{u"\u2212\u2153"_qs, "0", u"\u2153"_qs, u"\u2154"_qs, "1"}));
        QCOMPARE(texts.front(), u"\u22123"_qs);
        QCOMPARE(texts.back(), "10");
    }

    void signedDisplay_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("display");
        QTest::addColumn<QString>("signedDisplay");
        QTest::newRow("third") << 0.33 << u"\u2153"_qs << u"+\u2153"_qs;
        QTest::newRow("zero") << 0.0 << u"0"_qs << u"0"_qs;
        QTest::newRow("minus one keeps U+2212") << -1.0 << u"\u22121"_qs << u"\u22121"_qs;
        QTest::newRow("ten") << 10.0 << u"10"_qs << u"+10"_qs;
    }

    void signedDisplay()
    {
        QFETCH(double, value);
        QFETCH(QString, display);
        QFETCH(QString, signedDisplay);
        const auto& entries = scale<Compensation>(Fraction::third);
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const Compensation& c) { return c.value == value; });
        QVERIFY(found != entries.end());
        QCOMPARE(found->display, display);
        QCOMPARE(found->signedDisplay(), signedDisplay);
    }

    void identities()
    {
        QCOMPARE(ValueTables<Aperture>::full()[2].id(), "Aperturefull1.41410");
        // 1/1.26 rounds 793.65 up.
        QCOMPARE(ValueTables<ShutterSpeed>::thirdExtras()[10].id(), "ShutterSpeedthird1.3794");
        // Negative values round away from zero.
        QCOMPARE((Compensation{Fraction::third, -0.0625, "x"}).id(), "Compensationthirdx-63");
        QCOMPARE((ISO{Fraction::half, 17.68, "18"}).id(), "ISOhalf1817680");
        // The fastest speed rounds to zero.
        QCOMPARE(ValueTables<ShutterSpeed>::full().back().id(), "ShutterSpeedfull80000");
    }

    void everyTableEntryHasItsOwnIdentity()
    {
        QSet<QString> ids;
        for (const ShutterSpeed& s : limitCandidates<ShutterSpeed>())
            ids.insert(s.id());
        QCOMPARE(ids.size(), 73);
        QCOMPARE(limitCandidates<Aperture>().size(), std::size_t(49));
        QCOMPARE(limitCandidates<ISO>().size(), std::size_t(37));
    }

    void nearestEntry()
    {
        QCOMPARE(nearestAperture(0.1), "0.7");
        QCOMPARE(nearestAperture(1000.0), "45");
        QCOMPARE(nearestAperture(1.2), "1"); // linear: by ratio 1.4 would be nearer
        // A tie takes the earlier entry in list order.
        const std::vector<ISO> ascending = {{Fraction::full, 100.0, "100"},
                                            {Fraction::full, 200.0, "200"}};
        const std::vector<ISO> descending(ascending.rbegin(), ascending.rend());
        QCOMPARE(kestrum::nearestEntry<ISO>(ascending, 150.0).display, "100");
        QCOMPARE(kestrum::nearestEntry<ISO>(descending, 150.0).display, "200");
    }

    void cutScale()
    {
        const auto cut = [](double first, double second) {
            return displays(
                kestrum::cutScale<Aperture>(scale<Aperture>(Fraction::full), first, second));
        };
        // Bounds between entries snap outward by distance.
        QCOMPARE(cut(1.2, 20.0),
                 (QStringList{"1", "1.4", "2", "2.8", "4", "5.6", "8", "11", "16", "22"}));
        QCOMPARE(cut(0.0, 1e6), displays(scale<Aperture>(Fraction::full))); // snap to the ends
        QCOMPARE(cut(4.1, 3.9), QStringList{"4"});
        QCOMPARE(cut(1.41, 22.63),
                 (QStringList{"1.4", "2", "2.8", "4", "5.6", "8", "11", "16", "22"}));
    }

    void speedScaleRunsFromSlowestToFastest()
    {
        const auto& speeds = scale<ShutterSpeed>(Fraction::full);
        QCOMPARE(displays(kestrum::cutScale<ShutterSpeed>(speeds, 4.0, 0.0009765625)),
                 (QStringList{"4s", "2s", "1s", "2", "4", "8", "15", "30", "60", "125", "250",
                              "500", "1000"}));
        // 0.75 s lies 0.25 from both "1s" and "2"; "1s" comes first.
        QCOMPARE(kestrum::nearestEntry<ShutterSpeed>(speeds, 0.75).display, "1s");
    }
};

QTEST_GUILESS_MAIN(ScalesTest)
#include "tst_scales.moc"
