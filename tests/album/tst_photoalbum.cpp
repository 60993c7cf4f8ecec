#include "support/testphotos.h"

#include "album/photoalbum.h"
#include "support/fakephotolibrary.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

using namespace kestrum;
using namespace kestrum::test;
using Authorization = PhotoLibraryAuthorization;

namespace {

// Waits for `future` to finish; yields how it failed, if it did.
template <typename Exception = PhotoAlbumException, typename T>
auto albumError(const QFuture<T>& future)
    -> std::optional<decltype(std::declval<Exception>().error())>
{
    if (!QTest::qWaitFor([&] { return future.isFinished(); })) {
        QTest::qFail("the future never finished", __FILE__, __LINE__);
        return std::nullopt;
    }
    try {
        QFuture<T>(future).waitForFinished();
    } catch (const Exception& error) {
        return error.error();
    }
    return std::nullopt;
}

// Lets every started read finish, and `album`'s latest load publish.
void settle(const PhotoAlbum* album = nullptr)
{
    QThreadPool::globalInstance()->waitForDone();
    if (album)
        QTRY_VERIFY(album->loading().isFinished());
    QCoreApplication::processEvents();
}

} // namespace

using AlbumError = std::optional<PhotoAlbum::Error>;
Q_DECLARE_METATYPE(AlbumError)

// The album's rules on a library in memory: permission, album, saving, reading, changes.
class PhotoAlbumTest : public QObject {
    Q_OBJECT

    const Exiv2ImageMetadata m_metadata;
    QTemporaryDir m_dir;

    QUrl loggedFile(const QString& iso = "200")
    {
        const QString path = m_dir.filePath(QStringLiteral("Kestrum-%1.jpeg").arg(iso));
        writeFile(path, loggedJpeg(m_metadata, exposureMetadata(iso, "2.8", "500", 0.33)));
        return QUrl::fromLocalFile(path);
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }
    void cleanup() { settle(); }

    void checkAuthorization_data()
    {
        QTest::addColumn<Authorization>("status");
        QTest::addColumn<Authorization>("answer");
        QTest::addColumn<AlbumError>("error");
        QTest::addColumn<int>("requests");
        using enum PhotoLibraryAuthorization;
        const AlbumError none, no(PhotoAlbum::Error::noPermission),
            part(PhotoAlbum::Error::limitedPermission);
        QTest::newRow("authorized") << authorized << denied << none << 0;
        QTest::newRow("denied") << denied << authorized << no << 0;
        QTest::newRow("restricted") << restricted << authorized << no << 0;
        QTest::newRow("limited") << limited << authorized << part << 0;
        QTest::newRow("asked, granted") << notDetermined << authorized << none << 1;
        QTest::newRow("asked, refused") << notDetermined << denied << no << 1;
        QTest::newRow("asked, limited") << notDetermined << limited << part << 1;
        QTest::newRow("asked, still undecided") << notDetermined << notDetermined << no << 1;
    }

    void checkAuthorization()
    {
        QFETCH(Authorization, status);
        QFETCH(Authorization, answer);
        FakePhotoLibrary library;
        library.setAuthorizationStatus(status);
        library.setAuthorizationAnswer(answer);
        PhotoAlbum album(library, m_metadata);
        QTEST(albumError(album.checkAuthorization()), "error");
        QTEST(library.authorizationRequests(), "requests");
    }

    void firstSaveAsksOnceAndMakesTheAlbum()
    {
        FakePhotoLibrary library;
        library.setAuthorizationStatus(Authorization::notDetermined);
        PhotoAlbum album(library, m_metadata);
        const auto first = album.save(loggedFile("200"));
        QCOMPARE(albumError(first), std::nullopt);
        QTRY_COMPARE(album.loggedExposures().size(), 1);
        const auto second = album.save(loggedFile("400"));
        QCOMPARE(albumError(second), std::nullopt);
        QTRY_COMPARE(identifiers(album), (QStringList{second.result(), first.result()}));
        QCOMPARE(album.loggedExposures().first().iso(), "400");
        QCOMPARE(library.authorizationRequests(), 1);
        QCOMPARE(library.albumCreations(), 1);

        const auto image = album.fullSizeImage(first.result());
        QTRY_VERIFY(image.isFinished());
        QCOMPARE(image.result().value_or(QImage()).size(), QSize(64, 48));
        const auto unknown = album.fullSizeImage(first.result().toUpper());
        QTRY_VERIFY(unknown.isFinished());
        QVERIFY(!unknown.result());
    }

    void adoptsTheUsersAlbumAndSkipsWhatIsNotLogged()
    {
        FakePhotoLibrary library;
        const auto own = library.addAlbum("Kestrum");
        const auto other = library.addAlbum("kestrum");
        const QByteArray logged = loggedJpeg(m_metadata, exposureMetadata("100", "11", "4", 0));
        const auto date = [](int day) { return QDateTime(QDate(2024, 5, day), QTime(12, 0)); };
        const auto older = library.addPhoto(own, logged, date(1));
        const auto newer = library.addPhoto(own, logged, date(3));
        library.addPhoto(own, plainJpeg(), date(4));                    // no exposure
        library.addPhoto(own, logged, std::nullopt);                    // no creation date
        library.addPhoto(own, logged.left(logged.size() - 2), date(5)); // cut short
        library.addPhoto(own, QByteArray("not an image"), date(6));
        library.addPhoto(other, logged, date(7)); // another album

        PhotoAlbum album(library, m_metadata);
        QTRY_COMPARE(identifiers(album),
                     (QStringList{newer.localIdentifier, older.localIdentifier}));
        QCOMPARE(album.loggedExposures().first().speed(), "1/4s");

        QCOMPARE(albumError(album.save(loggedFile())), std::nullopt);
        QTRY_COMPARE(album.loggedExposures().size(), 3);
        QCOMPARE(library.albumCreations(), 0);
    }

    void failures()
    {
        FakePhotoLibrary library;
        PhotoAlbum album(library, m_metadata);
        library.setAlbumCreationFails(true);
        QCOMPARE(albumError(album.save(loggedFile())),
                 std::optional(PhotoAlbum::Error::albumNotFound));

        library.setAlbumCreationFails(false);
        library.setAssetCreationError(PhotoLibrary::Error::writeFailed);
        QCOMPARE(albumError<PhotoLibraryException>(album.save(loggedFile())), // passed on
                 std::optional(PhotoLibrary::Error::writeFailed));
        settle(&album);
        QVERIFY(album.loggedExposures().isEmpty());
    }

    void followsChangesToItsAlbumOnly()
    {
        FakePhotoLibrary library;
        PhotoAlbum album(library, m_metadata);
        QCOMPARE(albumError(album.save(loggedFile())), std::nullopt);
        settle(&album);
        const auto own = *library.fetchAlbum("Kestrum");
        const auto other = library.addAlbum("Holiday");
        library.addPhoto(own, loggedJpeg(m_metadata, exposureMetadata("800", "2", "30", 0)),
                         QDateTime::currentDateTime());
        QSignalSpy changed(&album, &PhotoAlbum::loggedExposuresChanged);

        PhotoLibraryChange elsewhere;
        elsewhere.addAlbum(other.localIdentifier, {other});
        library.announce(elsewhere);
        settle(&album);
        QCOMPARE(changed.count(), 0);

        PhotoLibraryChange here;
        here.addAlbum(own.localIdentifier, {own});
        library.announce(here);
        QTRY_COMPARE(album.loggedExposures().size(), 2);
        QCOMPARE(album.loggedExposures().first().iso(), "800");

        // A deleted album leaves the list as it was, and the next save makes a new one.
        library.removeAlbum(own);
        PhotoLibraryChange deleted;
        deleted.addAlbum(own.localIdentifier, {std::nullopt});
        library.announce(deleted);
        settle(&album);
        QCOMPARE(album.loggedExposures().size(), 2);
        QCOMPARE(albumError(album.save(loggedFile())), std::nullopt);
        QCOMPARE(library.albumCreations(), 2);

        // Deleted before the library could tell: the save makes it again all the same.
        library.removeAlbum(*library.fetchAlbum("Kestrum"));
        QCOMPARE(albumError(album.save(loggedFile())), std::nullopt);
        QCOMPARE(library.albumCreations(), 3);
    }
};

QTEST_GUILESS_MAIN(PhotoAlbumTest)
#include "tst_photoalbum.moc"
