#include "exposure/scale.h"

#include <QSet>
#include <QTest>

#include <unordered_set>

using namespace kestrum;

namespace {

template <typename C> QStringList displays(const std::vector<C>& entries)
{
    QStringList out;
    for (const C& e : entries)
        out.append(e.display);
    return out;
}

template <typename C> void verifyMergedScale(Fraction fraction, std::size_t expectedSize)
{
    const auto& entries = scale<C>(fraction);
    QCOMPARE(entries.size(), expectedSize);
    QSet<double> values;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        values.insert(entries[i].value);
        if (i == 0)
            continue;
        if constexpr (C::scaleDescending)
            QVERIFY2(entries[i - 1].value > entries[i].value, qPrintable(entries[i].display));
        else
            QVERIFY2(entries[i - 1].value < entries[i].value, qPrintable(entries[i].display));
    }
    QCOMPARE(static_cast<std::size_t>(values.size()), expectedSize); // no value twice
}

} // namespace

class ScalesTest : public QObject {
    Q_OBJECT

private slots:
    void mergedScaleSizesAndOrder_data()
    {
        QTest::addColumn<QString>("component");
        QTest::addColumn<int>("fraction");
        QTest::addColumn<int>("size");
        const QList<std::tuple<const char*, int, int, int>> sizes = {{"aperture", 13, 25, 37},
                                                                     {"speed", 19, 37, 55},
                                                                     {"iso", 10, 19, 28},
                                                                     {"compensation", 14, 27, 40}};
        for (const auto& [name, full, half, third] : sizes) {
            QTest::addRow("%s full", name) << name << int(Fraction::full) << full;
            QTest::addRow("%s half", name) << name << int(Fraction::half) << half;
            QTest::addRow("%s third", name) << name << int(Fraction::third) << third;
        }
    }

    void mergedScaleSizesAndOrder()
    {
        QFETCH(QString, component);
        QFETCH(int, fraction);
        QFETCH(int, size);
        const auto f = static_cast<Fraction>(fraction);
        const auto n = static_cast<std::size_t>(size);
        if (component == u"aperture")
            verifyMergedScale<Aperture>(f, n);
        else if (component == u"speed")
            verifyMergedScale<ShutterSpeed>(f, n);
        else if (component == u"iso")
            verifyMergedScale<ISO>(f, n);
        else
            verifyMergedScale<Compensation>(f, n);
    }

    void fullScaleIsTheTableAsStored()
    {
        QCOMPARE(scale<ShutterSpeed>(Fraction::full).front(),
                 (ShutterSpeed{Fraction::full, 32.0, "30s"}));
        QCOMPARE(scale<ShutterSpeed>(Fraction::full).back(),
                 (ShutterSpeed{Fraction::full, 0.0001220703125, "8000"}));
        QCOMPARE(&scale<Aperture>(Fraction::full), &ValueTables<Aperture>::full());
    }

    void stepTexts_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("missing");
        QTest::addColumn<int>("fraction");
        QTest::newRow("full") << "full" << false << int(Fraction::full);
        QTest::newRow("half") << "half" << false << int(Fraction::half);
        QTest::newRow("third") << "third" << false << int(Fraction::third);
        QTest::newRow("unknown") << "quarter" << false << int(Fraction::full);
        QTest::newRow("case matters") << "Half" << false << int(Fraction::full);
        QTest::newRow("missing") << "" << true << int(Fraction::full);
    }

    void stepTexts()
    {
        QFETCH(QString, stored);
        QFETCH(bool, missing);
        QFETCH(int, fraction);
        const auto read = fractionOrFull(missing ? std::nullopt : std::optional(stored));
        QCOMPARE(int(read), fraction);
        QCOMPARE(scale<Aperture>(read).size(), scale<Aperture>(Fraction(fraction)).size());
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
        QTest::newRow("zero") << 0.0 << "0"
                              << "0";
        QTest::newRow("minus one keeps U+2212") << -1.0 << u"\u22121"_qs << u"\u22121"_qs;
        QTest::newRow("ten") << 10.0 << "10"
                             << "+10";
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

    void otherComponentsNeverShowASign()
    {
        const Aperture a{Fraction::full, 2.0, "2"};
        QCOMPARE(a.signedDisplay(), "2");
        const ISO iso{Fraction::full, 100.0, "100"};
        QCOMPARE(iso.signedDisplay(), "100");
    }

    void identities_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("expected");
        const auto& speeds = ValueTables<ShutterSpeed>::thirdExtras();
        QTest::newRow("full aperture 1.4")
            << ValueTables<Aperture>::full()[2].id() << "Aperturefull1.41410";
        QTest::newRow("third speed 1/1.26 rounds 793.65 up")
            << speeds[10].id() << "ShutterSpeedthird1.3794";
        QTest::newRow("negative compensation rounds away from zero")
            << Compensation{Fraction::third, -0.0625, "x"}.id() << "Compensationthirdx-63";
        QTest::newRow("iso") << ISO{Fraction::half, 17.68, "18"}.id() << "ISOhalf1817680";
        QTest::newRow("fastest speed rounds to zero")
            << ValueTables<ShutterSpeed>::full().back().id() << "ShutterSpeedfull80000";
    }

    void identities()
    {
        QFETCH(QString, id);
        QFETCH(QString, expected);
        QCOMPARE(id, expected);
    }

    void equalValueDifferentStepIsAnotherEntry()
    {
        const Aperture full{Fraction::full, 1.26, "1.2"};
        const Aperture third{Fraction::third, 1.26, "1.2"};
        QVERIFY(full != third);
        QVERIFY(full.id() != third.id());
        QVERIFY(qHash(full) != qHash(third));
        QVERIFY(full != (Aperture{Fraction::full, 1.2600000001, "1.2"})); // exact value counts
    }

    void everyTableEntryHasItsOwnIdentityAndHash()
    {
        QSet<QString> ids;
        std::unordered_set<ShutterSpeed> speeds;
        for (const ShutterSpeed& s : limitCandidates<ShutterSpeed>()) {
            ids.insert(s.id());
            speeds.insert(s);
        }
        QCOMPARE(ids.size(), 73);
        QCOMPARE(speeds.size(), std::size_t(73));
        QCOMPARE(limitCandidates<Aperture>().size(), std::size_t(49));
        QCOMPARE(limitCandidates<ISO>().size(), std::size_t(37));
    }

    void description()
    {
        QCOMPARE(ValueTables<Aperture>::full()[2].description(), "Aperture 1.41");
        QCOMPARE(ValueTables<ISO>::full()[3].description(), "ISO 100.0");
        QCOMPARE(ValueTables<ShutterSpeed>::full().back().description(),
                 "ShutterSpeed 0.0001220703125");
    }

    void nearestEntry_data()
    {
        QTest::addColumn<double>("target");
        QTest::addColumn<QString>("display");
        QTest::newRow("exact") << 4.0 << "4";
        QTest::newRow("linear not logarithmic") << 2.9 << "2.8";
        QTest::newRow("below the scale") << 0.1 << "0.7";
        QTest::newRow("above the scale") << 1000.0 << "45";
        QTest::newRow("1.2 goes to 1") << 1.2 << "1";
        QTest::newRow("20 goes to 22") << 20.0 << "22";
    }

    void nearestEntry()
    {
        QFETCH(double, target);
        QFETCH(QString, display);
        QCOMPARE(kestrum::nearestEntry<Aperture>(scale<Aperture>(Fraction::full), target).display,
                 display);
    }

    void tieTakesTheEarlierEntryInListOrder()
    {
        const std::vector<ISO> ascending = {{Fraction::full, 100.0, "100"},
                                            {Fraction::full, 200.0, "200"}};
        const std::vector<ISO> descending(ascending.rbegin(), ascending.rend());
        QCOMPARE(kestrum::nearestEntry<ISO>(ascending, 150.0).display, "100");
        QCOMPARE(kestrum::nearestEntry<ISO>(descending, 150.0).display, "200");
    }

    void nearestSpeedTieTakesTheLongerTime()
    {
        // 0.75 s lies 0.25 from both "1s" and "2"; "1s" comes first.
        QCOMPARE(
            kestrum::nearestEntry<ShutterSpeed>(scale<ShutterSpeed>(Fraction::full), 0.75).display,
            "1s");
    }

    void cutScale_data()
    {
        QTest::addColumn<double>("first");
        QTest::addColumn<double>("second");
        QTest::addColumn<QStringList>("displays");
        QTest::newRow("bounds between entries snap outward by distance")
            << 1.2 << 20.0
            << QStringList{"1", "1.4", "2", "2.8", "4", "5.6", "8", "11", "16", "22"};
        QTest::newRow("bounds outside the scale snap to its ends")
            << 0.0 << 1e6 << displays(scale<Aperture>(Fraction::full));
        QTest::newRow("one entry") << 4.1 << 3.9 << QStringList{"4"};
        QTest::newRow("default limits")
            << 1.41 << 22.63 << QStringList{"1.4", "2", "2.8", "4", "5.6", "8", "11", "16", "22"};
    }

    void cutScale()
    {
        QFETCH(double, first);
        QFETCH(double, second);
        QFETCH(QStringList, displays);
        QCOMPARE(
            ::displays(kestrum::cutScale<Aperture>(scale<Aperture>(Fraction::full), first, second)),
            displays);
    }

    void cutSpeedScaleRunsFromSlowestToFastest()
    {
        const auto cut =
            kestrum::cutScale<ShutterSpeed>(scale<ShutterSpeed>(Fraction::full), 4.0, 0.0009765625);
        QCOMPARE(displays(cut), (QStringList{"4s", "2s", "1s", "2", "4", "8", "15", "30", "60",
                                             "125", "250", "500", "1000"}));
    }
};

QTEST_GUILESS_MAIN(ScalesTest)
#include "tst_scales.moc"
