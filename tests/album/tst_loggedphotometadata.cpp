#include "album/loggedphotometadata.h"

#include <QTest>

using namespace kestrum;
namespace key = imageproperty;

Q_DECLARE_METATYPE(std::optional<double>)

// The metadata provider: what a logged photo's properties are made of.
class LoggedPhotoMetadataTest : public QObject {
    Q_OBJECT

private slots:
    void parseDisplayNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::optional<double>>("number");
        QTest::newRow("decimal") << "2.8" << std::optional(2.8);
        QTest::newRow("exponent") << "1e3" << std::optional(1000.0);
        QTest::newRow("hyphen-minus") << "-3" << std::optional(-3.0);
        QTest::newRow("typographic minus") << "\u22123" << std::optional<double>();
        QTest::newRow("plus sign") << "+1" << std::optional<double>();
        QTest::newRow("leading space") << " 2" << std::optional<double>();
        QTest::newRow("trailing unit") << "2.8f" << std::optional<double>();
        QTest::newRow("empty") << "" << std::optional<double>();
    }

    void parseDisplayNumber()
    {
        QFETCH(QString, text);
        QFETCH(std::optional<double>, number);
        QCOMPARE(kestrum::parseDisplayNumber(text), number);
    }

    void exposureTime_data()
    {
        QTest::addColumn<QString>("speed");
        QTest::addColumn<double>("seconds");
        QTest::newRow("denominator") << "500" << 0.002;
        QTest::newRow("fractional denominator") << "1.5" << 0.6666666666666666;
        QTest::newRow("whole seconds") << "2s" << 2.0;
        QTest::newRow("every s goes") << "3ss" << 3.0;
        QTest::newRow("not a number") << "abc" << 0.0;
        QTest::newRow("only an s") << "s" << 0.0;
    }

    void exposureTime()
    {
        QFETCH(QString, speed);
        QFETCH(double, seconds);
        QCOMPARE(kestrum::exposureTime(speed), seconds);
    }

    void layout()
    {
        const auto properties = loggedPhotoMetadata(
            ISO{Fraction::third, 200, "200"}, Aperture{Fraction::third, 2.828, "2.8"},
            ShutterSpeed{Fraction::full, 0.001953125, "500"},
            Compensation{Fraction::third, 0.33, "0.3"}, Location{-33.86, 151.21, 58.0});
        QCOMPARE(properties.keys(), (QStringList{"{Exif}", "{GPS}", "{TIFF}"}));

        const QVariantMap exif = properties.value(key::kExifDictionary).toMap();
        QCOMPARE(exif.value(key::kExifVersion), QVariant(QVariantList{2, 3}));
        QCOMPARE(exif.value(key::kISOSpeed), QVariant(200.0));
        QCOMPARE(exif.value(key::kISOSpeedRatings), QVariant(QVariantList{200.0}));
        QCOMPARE(exif.value(key::kFNumber), QVariant(2.8)); // the text, not 2.828
        QCOMPARE(exif.value(key::kExposureTime), QVariant(0.002));
        QCOMPARE(exif.value(key::kExposureBiasValue), QVariant(0.33)); // the value, not "0.3"
        QCOMPARE(properties.value(key::kTIFFDictionary).toMap().value(key::kModel),
                 QVariant("Kestrum Light Meter"));
        QCOMPARE(properties.value(key::kGPSDictionary).toMap(),
                 (QVariantMap{
                     {key::kLatitude, -33.86}, {key::kLongitude, 151.21}, {key::kAltitude, 58.0}}));
    }

    void noLocationNoGPSAndUnreadableTextsGiveZero()
    {
        const auto properties = loggedPhotoMetadata(
            ISO{Fraction::full, 100, "auto"}, Aperture{Fraction::full, 4, "f/4"},
            ShutterSpeed{Fraction::full, 1, "1/1"}, Compensation{}, std::nullopt);
        QVERIFY(!properties.contains(key::kGPSDictionary));
        const QVariantMap exif = properties.value(key::kExifDictionary).toMap();
        QCOMPARE(exif.value(key::kISOSpeed), QVariant(0.0));
        QCOMPARE(exif.value(key::kISOSpeedRatings), QVariant(QVariantList{0.0}));
        QCOMPARE(exif.value(key::kFNumber), QVariant(0.0));
        QCOMPARE(exif.value(key::kExposureTime), QVariant(0.0));
    }
};

QTEST_GUILESS_MAIN(LoggedPhotoMetadataTest)
#include "tst_loggedphotometadata.moc"
