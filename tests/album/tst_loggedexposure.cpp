#include "album/loggedexposure.h"

#include <QTest>

using namespace kestrum;
namespace key = imageproperty;

Q_DECLARE_METATYPE(std::optional<Coordinate>)

// What a photo's properties read back as: the browser's texts, or no exposure at all.
class LoggedExposureTest : public QObject {
    Q_OBJECT

private slots:
    void texts_data()
    {
        QTest::addColumn<QVariantMap>("exif");
        QTest::addColumn<QStringList>("texts"); // iso, aperture, speed, compensation; empty: none

        const auto exif = [](QVariant iso, QVariant fNumber, QVariant time, QVariant bias) {
            QVariantMap group{{key::kISOSpeed, iso},
                              {key::kFNumber, fNumber},
                              {key::kExposureTime, time},
                              {key::kExposureBiasValue, bias}};
            for (auto it = group.begin(); it != group.end();)
                it = it->isValid() ? std::next(it) : group.erase(it);
            return group;
        };
        QTest::newRow("portrait sample") << exif(qint64(200), 2.8, 0.002, 0.33)
                                         << QStringList{"200", "2.8", "1/500s", "+0.33 EV"};
        QTest::newRow("landscape sample")
            << exif(qint64(100), 11.0, 0.25, 0.0) << QStringList{"100", "11.0", "1/4s", "±0 EV"};
        QTest::newRow("long time, negative bias")
            << exif(qint64(1600), 1.4, 2.0, -0.7) << QStringList{"1600", "1.4", "2.0s", "-0.7 EV"};
        QTest::newRow("one second is not a fraction")
            << exif(qint64(50), 22.0, 1.0, 3.0) << QStringList{"50", "22.0", "1.0s", "+3.0 EV"};
        QTest::newRow("reciprocal truncates")
            << exif(qint64(100), 4.0, 0.3, -0.0) << QStringList{"100", "4.0", "1/3s", "±0 EV"};
        QTest::newRow("speed text 2 was written as 0.5")
            << exif(qint64(100), 4.0, 0.5, 1.0 / 3)
            << QStringList{"100", "4.0", "1/2s", "+0.3333333333333333 EV"};
        QTest::newRow("whole numbers cross types") << exif(200.0, qint64(8), qint64(2), qint64(-1))
                                                   << QStringList{"200", "8.0", "2.0s", "-1.0 EV"};
        QTest::newRow("fractional ISO") << exif(200.5, 2.8, 0.002, 0.0) << QStringList{};
        QTest::newRow("ISO as text") << exif("200", 2.8, 0.002, 0.0) << QStringList{};
        QTest::newRow("f-number as text") << exif(qint64(200), "2.8", 0.002, 0.0) << QStringList{};
        QTest::newRow("no f-number") << exif(qint64(200), {}, 0.002, 0.0) << QStringList{};
        QTest::newRow("no bias") << exif(qint64(200), 2.8, 0.002, {}) << QStringList{};
        QTest::newRow("no exposure time") << exif(qint64(200), 2.8, {}, 0.0) << QStringList{};
    }

    void texts()
    {
        QFETCH(QVariantMap, exif);
        QFETCH(QStringList, texts);
        const auto date = QDateTime::fromSecsSinceEpoch(1'700'000'000);
        const auto exposure = LoggedExposure::fromProperties(
            "photo-1", EncodedImage(), date, {{QString(key::kExifDictionary), exif}});
        QCOMPARE(exposure.has_value(), !texts.isEmpty());
        if (!exposure)
            return;
        QCOMPARE((QStringList{exposure->iso(), exposure->aperture(), exposure->speed(),
                              exposure->compensation()}),
                 texts);
        QCOMPARE(exposure->localIdentifier(), "photo-1");
        QCOMPARE(exposure->date(), date);
    }

    void exifMustBeADictionary()
    {
        QVERIFY(!LoggedExposure::fromProperties("p", {}, {}, {}));
        QVERIFY(!LoggedExposure::fromProperties("p", {}, {}, {{key::kExifDictionary, "ISO 200"}}));
    }

    void coordinate_data()
    {
        QTest::addColumn<QVariant>("gps");
        QTest::addColumn<std::optional<Coordinate>>("coordinate");
        QTest::newRow("none") << QVariant() << std::optional<Coordinate>();
        QTest::newRow("not a dictionary") << QVariant("50.8, 6.4") << std::optional<Coordinate>();
        QTest::newRow("latitude only")
            << QVariant(QVariantMap{{key::kLatitude, 50.82}}) << std::optional<Coordinate>();
        QTest::newRow("longitude as text")
            << QVariant(QVariantMap{{key::kLatitude, 50.82}, {key::kLongitude, "6.45"}})
            << std::optional<Coordinate>();
        QTest::newRow("signed pair, used as it stands")
            << QVariant(QVariantMap{
                   {key::kLatitude, -33.86}, {key::kLongitude, 151.21}, {key::kLatitudeRef, "N"}})
            << std::optional(Coordinate{-33.86, 151.21});
    }

    void coordinate()
    {
        QFETCH(QVariant, gps);
        QFETCH(std::optional<Coordinate>, coordinate);
        ImageProperties properties{
            {key::kExifDictionary, QVariantMap{{key::kISOSpeed, 100},
                                               {key::kFNumber, 2.0},
                                               {key::kExposureTime, 0.01},
                                               {key::kExposureBiasValue, 0}}}};
        if (gps.isValid())
            properties.insert(key::kGPSDictionary, gps);
        const auto exposure = LoggedExposure::fromProperties("p", {}, {}, properties);
        QVERIFY(exposure); // a GPS group never keeps a photo out
        QCOMPARE(exposure->coordinate(), coordinate);
    }
};

QTEST_GUILESS_MAIN(LoggedExposureTest)
#include "tst_loggedexposure.moc"
