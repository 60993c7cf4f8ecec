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
        QTest::addColumn<ImageProperties>("properties");
        QTest::addColumn<QStringList>("texts"); // iso, aperture, speed, compensation; empty: none

        // An invalid entry is left out; `model` names the camera, when given.
        const auto photo = [](QVariant iso, QVariant fNumber, QVariant time, QVariant bias,
                              const QString& model = {}) {
            QVariantMap exif{{key::kISOSpeed, iso},
                             {key::kFNumber, fNumber},
                             {key::kExposureTime, time},
                             {key::kExposureBiasValue, bias}};
            exif.removeIf([](const auto& entry) { return !entry.value().isValid(); });
            ImageProperties properties{{key::kExifDictionary, exif}};
            if (!model.isEmpty())
                properties.insert(key::kTIFFDictionary, QVariantMap{{key::kModel, model}});
            return properties;
        };
        QTest::newRow("long time, negative bias")
            << photo(qint64(1600), 1.4, 2.0, -0.7) << QStringList{"1600", "1.4", "2.0s", "-0.7 EV"};
        QTest::newRow("one second is not a fraction")
            << photo(qint64(50), 22.0, 1.0, 3.0) << QStringList{"50", "22.0", "1.0s", "+3.0 EV"};
        QTest::newRow("reciprocal truncates")
            << photo(qint64(100), 4.0, 0.3, -0.0) << QStringList{"100", "4.0", "1/3s", "±0 EV"};
        QTest::newRow("bias in full")
            << photo(qint64(100), 4.0, 0.5, 1.0 / 3)
            << QStringList{"100", "4.0", "1/2s", "+0.3333333333333333 EV"};
        QTest::newRow("whole numbers cross types") << photo(200.0, qint64(8), qint64(2), qint64(-1))
                                                   << QStringList{"200", "8.0", "2.0s", "-1.0 EV"};
        QTest::newRow("fractional ISO") << photo(200.5, 2.8, 0.002, 0.0) << QStringList{};
        QTest::newRow("ISO as text") << photo("200", 2.8, 0.002, 0.0) << QStringList{};
        QTest::newRow("f-number as text") << photo(qint64(200), "2.8", 0.002, 0.0) << QStringList{};
        QTest::newRow("no bias") << photo(qint64(200), 2.8, 0.002, {}) << QStringList{};
        QTest::newRow("no exposure time") << photo(qint64(200), 2.8, {}, 0.0) << QStringList{};
        QTest::newRow("no Exif group") << ImageProperties() << QStringList{};
        QTest::newRow("Exif group as text")
            << ImageProperties{{key::kExifDictionary, "ISO 200"}} << QStringList{};
        // Only the meter's own photos must have a speed; another camera's are left out.
        QTest::newRow("another camera's time 0")
            << photo(qint64(200), 2.8, 0.0, 0.0, "Other Camera") << QStringList{};
        QTest::newRow("no camera's time 0") << photo(qint64(200), 2.8, 0.0, 0.0) << QStringList{};
        QTest::newRow("another camera's time too short for a speed")
            << photo(qint64(200), 2.8, 1e-20, 0.0, "Other Camera") << QStringList{};
    }

    void texts()
    {
        QFETCH(ImageProperties, properties);
        QFETCH(QStringList, texts);
        const auto exposure = LoggedExposure::fromProperties("p", {}, {}, properties);
        const QStringList read = exposure ? QStringList{exposure->iso(), exposure->aperture(),
                                                        exposure->speed(), exposure->compensation()}
                                          : QStringList{};
        QCOMPARE(read, texts);
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
