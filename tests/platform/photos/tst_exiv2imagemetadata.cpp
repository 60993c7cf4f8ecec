#include "support/testphotos.h"

#include "album/loggedexposure.h"
#include "exposure/scale.h"
#include "platform/photos/folderphotolibrary.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;
using namespace kestrum::test;
namespace key = imageproperty;

// EXIF through Exiv2: what is written reads back the same, here and in exiftool.
class Exiv2ImageMetadataTest : public QObject {
    Q_OBJECT

    const Exiv2ImageMetadata m_metadata;
    QTemporaryDir m_dir;

    // Whether the exposure texts of `properties` read back the same from a JPEG.
    bool keepsItsTexts(const ImageProperties& properties)
    {
        const auto texts = [](const ImageProperties& read) {
            const auto exposure = LoggedExposure::fromProperties("p", {}, {}, read);
            return exposure ? QStringList{exposure->iso(), exposure->aperture(), exposure->speed(),
                                          exposure->compensation()}
                            : QStringList{};
        };
        const auto read = m_metadata.properties(loggedJpeg(m_metadata, properties));
        return read && !texts(*read).isEmpty() && texts(properties) == texts(*read);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY2(!QStandardPaths::findExecutable("exiftool").isEmpty(),
                 "exiftool is missing; scripts/bootstrap installs it");
    }

    void everyScaleEntryKeepsItsTexts()
    {
        for (const auto& speed : scale<ShutterSpeed>(Fraction::third))
            QVERIFY2(keepsItsTexts(exposureMetadata("100", "4", speed.display, 0)),
                     qPrintable(speed.display));
        for (const auto& aperture : scale<Aperture>(Fraction::third))
            QVERIFY2(keepsItsTexts(exposureMetadata("100", aperture.display, "60", 0)),
                     qPrintable(aperture.display));
        for (const auto& compensation : scale<Compensation>(Fraction::third))
            QVERIFY2(keepsItsTexts(exposureMetadata("100", "4", "60", compensation.value)),
                     qPrintable(compensation.display));
        for (const auto& iso : scale<ISO>(Fraction::third))
            QVERIFY2(keepsItsTexts(exposureMetadata(iso.display, "4", "60", 0)),
                     qPrintable(iso.display));
    }

    void position_data()
    {
        QTest::addColumn<Location>("written");
        QTest::addColumn<Location>("read");
        const auto row = [](const char* tag, Location written, std::optional<Location> read = {}) {
            QTest::newRow(tag) << written << read.value_or(written);
        };
        row("south and east", {-33.86, 151.21, 58.0});
        row("north and west, below sea level", {50.82, -6.45, -20.25});
        row("seconds that round to 60 carry", {59.9999999999, -0.00000001, 0},
            Location{60.0, -0.00000001, 0});
        row("nine decimals survive", {37.335123456, -122.000000001, 35.93964003511852});
    }

    void position()
    {
        QFETCH(Location, written);
        QFETCH(Location, read);
        const auto properties = m_metadata.properties(
            loggedJpeg(m_metadata, exposureMetadata("1", "1", "1", 0, written)));
        QVERIFY(properties);
        const QVariantMap gps = properties->value(key::kGPSDictionary).toMap();
        QCOMPARE(gps.value(key::kLatitude).toDouble(), read.latitude);
        QCOMPARE(gps.value(key::kLongitude).toDouble(), read.longitude);
        QCOMPARE(gps.value(key::kAltitude).toDouble(), read.altitude);
    }

    void notAnImage_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("ISO 200, f/2.8, 1/500");
        QTest::newRow("JPEG start only") << QByteArray("\xFF\xD8\xFF\xE1\x00\x10"
                                                       "Exif",
                                                       10);
    }

    void notAnImage()
    {
        QFETCH(QByteArray, data);
        QVERIFY(!m_metadata.properties(data));
        QVERIFY(!m_metadata.merged(data, exposureMetadata("100", "4", "60", 0)));
    }

    void mergingKeepsWhatIsThere()
    {
        const auto dated = m_metadata.merged(
            plainJpeg(),
            {{key::kExifDictionary, QVariantMap{{key::kDateTimeOriginal, "2024:05:01 12:30:00"}}}});
        QVERIFY(dated);
        const auto both = m_metadata.merged(*dated, exposureMetadata("400", "5.6", "60", -1));
        QVERIFY(both);
        const QVariantMap exif = m_metadata.properties(*both)->value(key::kExifDictionary).toMap();
        QCOMPARE(exif.value(key::kDateTimeOriginal), QVariant("2024:05:01 12:30:00"));
        QCOMPARE(exif.value(key::kISOSpeed), QVariant(qint64(400)));
        QCOMPARE(QImage::fromData(*both).size(), QSize(64, 48));
    }

    void weReadWhatExiftoolWrites()
    {
        const QString path = m_dir.filePath("tagged.jpeg");
        QVERIFY(writeFile(path, plainJpeg()));
        QProcess process;
        process.start("exiftool",
                      {"-overwrite_original", "-ExifIFD:ISOSpeed=400", "-ISO=400", "-FNumber=5.6",
                       "-ExposureTime=1/60", "-ExposureCompensation=-1", "-GPSLatitude=48.8584",
                       "-GPSLatitudeRef=N", "-GPSLongitude=2.2945", "-GPSLongitudeRef=W",
                       "-DateTimeOriginal=2024:05:01 12:30:00", "-OffsetTimeOriginal=+02:00",
                       path});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitCode(), 0);

        const auto properties = m_metadata.fileProperties(path);
        QVERIFY(properties);
        const auto date = FolderPhotoLibrary::creationDate(path, m_metadata);
        QCOMPARE(date.value_or(QDateTime()), QDateTime(QDate(2024, 5, 1), QTime(10, 30), Qt::UTC));
        const auto exposure = LoggedExposure::fromProperties("tagged.jpeg", {}, *date, *properties);
        QVERIFY(exposure);
        QCOMPARE((QStringList{exposure->iso(), exposure->aperture(), exposure->speed(),
                              exposure->compensation()}),
                 (QStringList{"400", "5.6", "1/60s", "-1.0 EV"}));
        QCOMPARE(exposure->coordinate(), std::optional(Coordinate{48.8584, -2.2945}));
    }
};

QTEST_GUILESS_MAIN(Exiv2ImageMetadataTest)
#include "tst_exiv2imagemetadata.moc"
