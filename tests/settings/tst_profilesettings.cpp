#include "platform/memorypreferencestore.h"
#include "settings/profilesettings.h"

#include <QSignalSpy>
#include <QTest>

using namespace kestrum;

class ProfileSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void freshStoreReadsTheDefaults()
    {
        MemoryPreferenceStore store;
        const ProfileSettings profile(QStringLiteral("default"), store);
        QCOMPARE(profile.fractionForISO(), Fraction::full);
        QCOMPARE(profile.mode(), Mode::av);
        QCOMPARE(profile.minimumISO(), (ISO{Fraction::full, 50.0, "50"}));
        QCOMPARE(profile.maximumISO(), (ISO{Fraction::full, 1600.0, "1600"}));
        QCOMPARE(profile.maximumSpeed(), (ShutterSpeed{Fraction::full, 0.0009765625, "1000"}));
        QCOMPARE(profile.minimumSpeed(), (ShutterSpeed{Fraction::full, 4.0, "4s"}));
        QCOMPARE(profile.minimumAperture(), (Aperture{Fraction::full, 1.41, "1.4"}));
        QCOMPARE(profile.maximumAperture(), (Aperture{Fraction::full, 22.63, "22"}));
        QCOMPARE(profile.iso(), (ISO{Fraction::full, 100.0, ""}));
        QCOMPARE(profile.aperture(), (Aperture{Fraction::full, 2.828, ""}));
        QCOMPARE(profile.speed(), (ShutterSpeed{Fraction::full, 0.0078125, ""}));
        QVERIFY(store.storedKeys().isEmpty()); // registering writes nothing
    }

    void storedStepText_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("fraction");
        QTest::newRow("half") << QVariant("half") << int(Fraction::half);
        QTest::newRow("third") << QVariant("third") << int(Fraction::third);
        QTest::newRow("other text") << QVariant("thirds") << int(Fraction::full);
        QTest::newRow("not a text") << QVariant(3.0) << int(Fraction::full);
    }

    void storedStepText()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, fraction);
        MemoryPreferenceStore store;
        const ProfileSettings profile(QStringLiteral("default"), store);
        store.storeRaw("default.fractionForISO", stored);
        QCOMPARE(int(profile.fractionForISO()), fraction);
    }

    void storedModeText_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("mode");
        QTest::newRow("tv") << "tv" << int(Mode::tv);
        QTest::newRow("m") << "m" << int(Mode::m);
        QTest::newRow("unknown") << "p" << int(Mode::av);
    }

    void storedModeText()
    {
        QFETCH(QString, stored);
        QFETCH(int, mode);
        MemoryPreferenceStore store;
        const ProfileSettings profile(QStringLiteral("x"), store);
        store.setString("x.mode", stored);
        QCOMPARE(int(profile.mode()), mode);
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

    void raisingALimitMovesTheValueInside_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<double>("limit");
        QTest::addColumn<double>("current");
        QTest::addColumn<double>("moved");
        QTest::newRow("minimum ISO 200 moves ISO 100 to 200")
            << "minimumISO" << 200.0 << 100.0 << 200.0;
        QTest::newRow("maximum speed 1/500 moves 1/1000 to 1/500")
            << "maximumSpeed" << 0.001953125 << 0.0009765625 << 0.001953125;
        QTest::newRow("maximum aperture 8 moves 16 to 8")
            << "maximumAperture" << 8.0 << 16.0 << 8.0;
    }

    void raisingALimitMovesTheValueInside()
    {
        QFETCH(QString, setting);
        QFETCH(double, limit);
        QFETCH(double, current);
        QFETCH(double, moved);
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        if (setting == u"minimumISO") {
            profile.setISO({Fraction::full, current, ""});
            profile.setMinimumISO({Fraction::full, limit, "ignored"});
            QCOMPARE(store.doubleValue("default.minimumISO"), limit);
            QCOMPARE(profile.iso().value, moved);
        } else if (setting == u"maximumSpeed") {
            profile.setSpeed({Fraction::full, current, ""});
            profile.setMaximumSpeed({Fraction::full, limit, ""});
            QCOMPARE(profile.speed().value, moved);
        } else {
            profile.setAperture({Fraction::full, current, ""});
            profile.setMaximumAperture({Fraction::full, limit, ""});
            QCOMPARE(profile.aperture().value, moved);
        }
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

    void stepChangeAnnouncesBeforeEveryWrite()
    {
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        QSignalSpy announcements(&profile, &ProfileSettings::objectWillChange);
        profile.setFractionForISO(Fraction::half);
        // The setter's own, then six limit writes each followed by three value writes.
        QCOMPARE(announcements.size(), 1 + 24);
    }

    void announcementComesBeforeTheWrite()
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
        // The worked example: third-stop 1.2 becomes 1.4 rather than 1 on the full scale.
        MemoryPreferenceStore store;
        ProfileSettings profile(QStringLiteral("default"), store);
        profile.setFractionForAperture(Fraction::third);
        profile.setMinimumAperture({Fraction::third, 1.26, "1.2"});
        profile.setAperture({Fraction::third, 1.26, "1.2"});
        profile.setFractionForAperture(Fraction::full);
        QCOMPARE(profile.minimumAperture(), (Aperture{Fraction::full, 1.41, "1.4"}));
        QCOMPARE(profile.aperture().value, 1.41);
    }

    void profilesKeepSeparateKeys()
    {
        MemoryPreferenceStore store;
        ProfileSettings a(QStringLiteral("a"), store);
        ProfileSettings b(QStringLiteral("b"), store);
        a.setMode(Mode::tv);
        b.setISO({Fraction::full, 400.0, ""});
        QCOMPARE(a.mode(), Mode::tv);
        QCOMPARE(b.mode(), Mode::av);
        QCOMPARE(a.iso().value, 100.0);
        QCOMPARE(b.iso().value, 400.0);
        QCOMPARE(store.storedKeys().size(), 2);
        QVERIFY(store.storedKeys().contains("a.mode"));
        QVERIFY(store.storedKeys().contains("b.iso"));
    }

    void twoInstancesOfOneProfileShareTheirValues()
    {
        MemoryPreferenceStore store;
        ProfileSettings first(QStringLiteral("p"), store);
        const ProfileSettings second(QStringLiteral("p"), store);
        first.setFractionForSpeed(Fraction::third);
        QCOMPARE(second.fractionForSpeed(), Fraction::third);
    }

    void withoutAnIdTheKeysAreBare()
    {
        MemoryPreferenceStore store;
        ProfileSettings profile(std::nullopt, store);
        QCOMPARE(profile.prefix(), QString());
        profile.setMode(Mode::m);
        profile.setISO({Fraction::full, 200.0, ""});
        QCOMPARE(store.storedKeys().size(), 2);
        QVERIFY(store.storedKeys().contains("mode"));
        QVERIFY(store.storedKeys().contains("iso"));
    }
};

QTEST_GUILESS_MAIN(ProfileSettingsTest)
#include "tst_profilesettings.moc"
