#include "album/photoalbummock.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "support/fakephotolibrary.h"

#include <QTest>

using namespace kestrum;
namespace key = imageproperty;

// The album on mock data: its two samples and the sample metadata behind them.
class PhotoAlbumMockTest : public QObject {
    Q_OBJECT

    const Exiv2ImageMetadata m_metadata;

private slots:
    void twoSamplesAndSavesThatStoreNothing()
    {
        FakePhotoLibrary library;
        library.setAuthorizationStatus(PhotoLibraryAuthorization::notDetermined); // no real load
        PhotoAlbumMock album(library, m_metadata);
        const auto& samples = album.loggedExposures();
        QCOMPARE(samples.size(), 2);
        const LoggedExposure& portrait = samples.at(0);
        const LoggedExposure& landscape = samples.at(1);
        QCOMPARE(portrait.localIdentifier(), "mock_portrait_exposure");
        QCOMPARE((QStringList{portrait.iso(), portrait.aperture(), portrait.speed(),
                              portrait.compensation()}),
                 (QStringList{"200", "2.8", "1/500s", "+0.33 EV"}));
        QCOMPARE(landscape.localIdentifier(), "mock_landscape_exposure");
        QCOMPARE((QStringList{landscape.iso(), landscape.aperture(), landscape.speed(),
                              landscape.compensation()}),
                 (QStringList{"100", "11.0", "1/4s", "±0 EV"}));
        QCOMPARE(landscape.date().secsTo(portrait.date()), 71280);
        QVERIFY(portrait.coordinate() && landscape.coordinate());

        const QSize portraitSize = portrait.previewImage().decoded().size();
        QVERIFY(portraitSize.height() > portraitSize.width());
        QVERIFY(landscape.previewImage().size().width() > landscape.previewImage().size().height());

        // Full-size pictures of the samples only; saves that store nothing.
        const auto image = album.fullSizeImage("mock_landscape_exposure").result();
        QVERIFY(image && !image->isNull());
        QVERIFY(!album.fullSizeImage("mock_unknown_exposure").result());
        QCOMPARE(album.save(QUrl::fromLocalFile("/nonexistent/Kestrum.jpeg")).result(), QString());
        QVERIFY(!library.fetchAlbum("Kestrum"));
    }

    void sampleMetadata_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::newRow("German") << "de-DE" << 50.82 << 6.45;
        QTest::newRow("Japanese as written") << "ja-JA" << 35.14 << 136.96;
        QTest::newRow("Japanese in Japan falls through") << "ja-JP" << 37.33 << -122.01;
        QTest::newRow("simplified Chinese") << "zh-Hans" << 31.14 << 121.20;
        QTest::newRow("traditional Chinese") << "zh-Hant" << 24.82 << 121.52;
        QTest::newRow("underscore form falls through") << "de_DE" << 37.33 << -122.01;
    }

    void sampleMetadata()
    {
        QFETCH(QString, locale);
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        constexpr double kSlack = 1e-12;
        for (const bool portrait : {true, false}) {
            const auto properties = PhotoAlbumMock::sampleMetadata(portrait, locale);
            const QVariantMap gps = properties.value(key::kGPSDictionary).toMap();
            const double latitudeOffset = gps.value(key::kLatitude).toDouble() - latitude;
            const double longitudeOffset = gps.value(key::kLongitude).toDouble() - longitude;
            QVERIFY2(latitudeOffset >= 0.0001 - kSlack && latitudeOffset < 0.01,
                     qPrintable(locale));
            QVERIFY2(longitudeOffset >= 0.001 - kSlack && longitudeOffset < 0.01,
                     qPrintable(locale));
            QCOMPARE(gps.value(key::kLatitudeRef), QVariant("N"));
            QCOMPARE(gps.value(key::kLongitudeRef), QVariant("E"));
            QCOMPARE(properties.value(key::kOrientation), QVariant(qint64(6)));
        }
        QVERIFY(PhotoAlbumMock::sampleMetadata(true, locale) !=
                PhotoAlbumMock::sampleMetadata(true, locale)); // a fresh offset per call
    }
};

QTEST_GUILESS_MAIN(PhotoAlbumMockTest)
#include "tst_photoalbummock.moc"
