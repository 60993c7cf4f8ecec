#include "settings/profilesettings.h"
#include "support/memorypreferencestore.h"

#include <QTest>

using namespace kestrum;

namespace {
QStringList sortedKeys(const MemoryPreferenceStore& store)
{
    QStringList keys = store.storedKeys();
    keys.sort();
    return keys;
}
} // namespace

class ProfileSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void storedText_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("read");
        const QString step = "fractionForISO";
        QTest::newRow("half") << step << QVariant("half") << int(Fraction::half);
        QTest::newRow("step not a text") << step << QVariant(3.0) << int(Fraction::full);
        QTest::newRow("tv") << "mode" << QVariant("tv") << int(Mode::tv);
        QTest::newRow("m") << "mode" << QVariant("m") << int(Mode::m);
        QTest::newRow("unknown mode") << "mode" << QVariant("p") << int(Mode::av);
    }

    void storedText() // read at each call, after the profile was made
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        QFETCH(int, read);
        MemoryPreferenceStore store;
        const ProfileSettings profile(QStringLiteral("x"), store);
        store.storeRaw("x." + key, stored);
        QCOMPARE(key == u"mode" ? int(profile.mode()) : int(profile.fractionForISO()), read);
    }

    void limitReadsTheNearestTableEntry_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<QString>("display");
        QTest::addColumn<int>("fraction");
        QTest::newRow("60 is the third-stop 64") << 60.0 << "64" << int(Fraction::third);
        QTest::newRow("exact half-stop entry") << 141.4 << "140" << int(Fraction::half);
        QTest::newRow("full stop wins a tie with a third") << 113.0 << "100" << int(Fraction::full);
        QTest::newRow("far beyond the table") << 1e9 << "6400" << int(Fraction::full);
    }

    void limitReadsTheNearestTableEntry()
    {
        QFETCH(double, stored);
        QFETCH(QString, display);
        QFETCH(int, fraction);
        MemoryPreferenceStore store;
        const ProfileSettings profile(QStringLiteral("default"), store);
        store.setDouble("default.minimumISO", stored);
        QCOMPARE(profile.minimumISO().display, display);
        QCOMPARE(int(profile.minimumISO().type), fraction);
    }

    void raisingALimitMovesTheValueInside()
    {
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        profile.setISO({Fraction::full, 100.0, ""});
        profile.setMinimumISO({Fraction::full, 200.0, "ignored"});
        QCOMPARE(store.doubleValue("default.minimumISO"), 200.0);
        QCOMPARE(profile.iso().value, 200.0);
        profile.setSpeed({Fraction::full, 0.0009765625, ""}); // 1/1000 moves to 1/500
        profile.setMaximumSpeed({Fraction::full, 0.001953125, ""});
        QCOMPARE(profile.speed().value, 0.001953125);
        profile.setAperture({Fraction::full, 16.0, ""});
        profile.setMaximumAperture({Fraction::full, 8.0, ""});
        QCOMPARE(profile.aperture().value, 8.0);
    }

    void modeAndCurrentValuesMoveNothingElse()
    {
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        profile.setMode(Mode::m);
        profile.setISO({Fraction::full, 12345.0, ""}); // outside the limits, kept as it is
        QCOMPARE(profile.iso().value, 12345.0);
        QCOMPARE(store.storedKeys().size(), 2);
    }

    void writesAreAnnouncedBeforehand()
    {
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        QList<Mode> seen;
        connect(&profile, &ProfileSettings::objectWillChange, this,
                [&] { seen.append(profile.mode()); });
        profile.setMode(Mode::tv);
        QCOMPARE(seen, QList<Mode>{Mode::av});
    }

    void coarserStepMovesLimitsAndValues()
    {
        // Third-stop 1.2 becomes 1.4 rather than 1 on the full scale.
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        profile.setFractionForAperture(Fraction::third);
        profile.setMinimumAperture({Fraction::third, 1.26, "1.2"});
        profile.setAperture({Fraction::third, 1.26, "1.2"});
        profile.setFractionForAperture(Fraction::full);
        QCOMPARE(profile.minimumAperture(), (Aperture{Fraction::full, 1.41, "1.4"}));
        QCOMPARE(profile.aperture().value, 1.41);
    }

    void keysFollowTheProfileID()
    {
        MemoryPreferenceStore store;
        ProfileSettings a(QStringLiteral("a"), store);
        ProfileSettings b(QStringLiteral("b"), store);
        const ProfileSettings alsoB(QStringLiteral("b"), store);
        ProfileSettings bare(std::nullopt, store);
        QCOMPARE(bare.prefix(), QString());
        a.setMode(Mode::tv);
        b.setISO({Fraction::full, 400.0, ""});
        bare.setMode(Mode::m);
        bare.setISO({Fraction::full, 200.0, ""});
        QCOMPARE(a.mode(), Mode::tv);
        QCOMPARE(b.mode(), Mode::av);
        QCOMPARE(a.iso().value, 100.0);
        QCOMPARE(b.iso().value, 400.0);
        QCOMPARE(sortedKeys(store), (QStringList{"a.mode", "b.iso", "iso", "mode"}));
        b.setFractionForSpeed(Fraction::third);
        QCOMPARE(alsoB.fractionForSpeed(), Fraction::third); // instances of one id share values
    }
};

QTEST_GUILESS_MAIN(ProfileSettingsTest)
#include "tst_profilesettings.moc"
