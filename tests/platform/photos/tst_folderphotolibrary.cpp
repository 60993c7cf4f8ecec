#include "support/testphotos.h"

#include "album/photoalbum.h"
#include "platform/photos/folderphotolibrary.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

using namespace kestrum;
using namespace kestrum::test;
using Authorization = PhotoLibraryAuthorization;
namespace key = imageproperty;

namespace {

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

// A file system mounted for one test, unmounted when it ends.
struct Mount {
    QString path;
    bool mounted;
    Mount(const QString& at, const QString& options)
        : path(at)
        , mounted(QProcess::execute("mount", {"-t", "tmpfs", "-o", options, "tmpfs", at}) == 0)
    {}
    ~Mount()
    {
        if (mounted)
            QProcess::execute("umount", {path});
    }
};

bool canWriteIn(const QString& folder)
{
    QFile probe(folder + "/.probe");
    const bool written = probe.open(QIODevice::WriteOnly);
    probe.remove();
    return written;
}

} // namespace

// The photo library as a folder: permission, safe copies, dates, damage, outside changes.
class FolderPhotoLibraryTest : public QObject {
    Q_OBJECT

    const Exiv2ImageMetadata m_metadata;
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
    QString m_album;

    ImageProperties exposure() const { return exposureMetadata("200", "2.8", "500", 0.33); }

    QString source(const QString& name, const QByteArray& bytes)
    {
        const QString path = m_dir->filePath(name);
        writeFile(path, bytes);
        return path;
    }

    QString saveInto(PhotoAlbum& album, const QString& path)
    {
        const auto saved = album.save(QUrl::fromLocalFile(path));
        if (!QTest::qWaitFor([&] { return saved.isFinished(); }))
            return {};
        try {
            return saved.result();
        } catch (const std::exception& error) {
            return QString("failed: ") + error.what();
        }
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_root = m_dir->filePath("Pictures/Kestrum");
        m_album = m_root + "/Kestrum";
    }

    void cleanup() { QThreadPool::globalInstance()->waitForDone(); }

    void authorization_data()
    {
        QTest::addColumn<QString>("inTheWay"); // a file at this path in the dir
        QTest::addColumn<Authorization>("before");
        QTest::addColumn<Authorization>("after");
        QTest::newRow("not made yet")
            << "" << Authorization::notDetermined << Authorization::authorized;
        QTest::newRow("a file where the library goes")
            << "Pictures/Kestrum" << Authorization::denied << Authorization::denied;
        QTest::newRow("a file where Pictures goes")
            << "Pictures" << Authorization::denied << Authorization::denied;
    }

    void authorization()
    {
        QFETCH(QString, inTheWay);
        QFETCH(Authorization, before);
        QFETCH(Authorization, after);
        if (!inTheWay.isEmpty()) {
            QDir().mkpath(QFileInfo(m_dir->filePath(inTheWay)).path());
            QVERIFY(writeFile(m_dir->filePath(inTheWay), "x"));
        }
        FolderPhotoLibrary library(m_root, m_metadata);
        QCOMPARE(library.authorizationStatus(), before);
        QCOMPARE(library.requestAuthorization().result(), after);
        QCOMPARE(QFileInfo(m_root).isDir(), after == Authorization::authorized);
    }

    void savesDatedCopiesUnderNewNamesAndKeepsAPhotosOwnDate()
    {
        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        const QByteArray bytes = loggedJpeg(m_metadata, exposure());
        const QString path = source("Kestrum.jpeg", bytes);
        const QString first = saveInto(album, path);
        const QString second = saveInto(album, path);

        QVERIFY2(first.endsWith(".jpeg") && second.endsWith(".jpeg"), qPrintable(first + second));
        QVERIFY(first != second);
        QCOMPARE(entries(m_album), (QStringList{first, second}));
        QCOMPARE(QFileInfo(m_album + "/" + first).permissions() & QFileDevice::ReadOther,
                 QFileDevice::ReadOther);
        QFile original(path);
        QVERIFY(original.open(QIODevice::ReadOnly));
        QCOMPARE(original.readAll(), bytes);
        const auto stored = m_metadata.fileProperties(m_album + "/" + first);
        QVERIFY(stored->value(key::kExifDictionary).toMap().contains(key::kDateTimeOriginal));
        QTRY_COMPARE(album.loggedExposures().size(), 2);
        QCOMPARE(album.loggedExposures().first().localIdentifier(), second);

        // A photo that carries its own date keeps it, and sorts after those dated now.
        auto old = exposureMetadata("100", "8", "125", 0);
        QVariantMap exif = old.value(key::kExifDictionary).toMap();
        exif.insert(key::kDateTimeOriginal, "2020:01:02 03:04:05");
        old.insert(key::kExifDictionary, exif);
        const QString fromBefore = saveInto(album, source("old.jpeg", loggedJpeg(m_metadata, old)));
        QTRY_COMPARE(album.loggedExposures().size(), 3);
        QCOMPARE(album.loggedExposures().at(0).localIdentifier(), second);
        QCOMPARE(album.loggedExposures().at(2).localIdentifier(), fromBefore);
        QCOMPARE(album.loggedExposures().at(2).date(),
                 QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
    }

    void skipsFilesItCannotRead()
    {
        QVERIFY(QDir().mkpath(m_album));
        const QByteArray logged = loggedJpeg(m_metadata, exposure());
        QByteArray damagedHeader = logged;
        damagedHeader.replace(0, 64, QByteArray(64, '\x5A'));
        const auto large = m_metadata.merged(noisyJpeg(QSize(200, 150)), exposure());
        QVERIFY(writeFile(m_album + "/logged.jpeg", logged));
        QVERIFY(writeFile(m_album + "/empty.jpeg", {}));
        QVERIFY(writeFile(m_album + "/truncated.jpeg", large->left(large->size() - 1000)));
        QVERIFY(writeFile(m_album + "/damaged.jpeg", damagedHeader));
        QVERIFY(writeFile(m_album + "/notes.jpeg", "ISO 200, f/2.8, 1/500"));
        QVERIFY(writeFile(m_album + "/plain.jpeg", plainJpeg()));
        QVERIFY(QImage(8, 8, QImage::Format_RGB32).save(m_album + "/drawing.png", "PNG"));
        QVERIFY(writeFile(m_album + "/notes.txt", "not a photo"));

        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        QTRY_COMPARE(album.loggedExposures().size(), 1);
        QCOMPARE(album.loggedExposures().first().localIdentifier(), "logged.jpeg");
        const auto empty = album.fullSizeImage("empty.jpeg");
        QTRY_VERIFY(empty.isFinished());
        QVERIFY(!empty.result());
    }

    void failedSavesLeaveNothingBehind_data()
    {
        QTest::addColumn<QString>("mountOptions"); // empty: a read-only folder by permissions
        QTest::newRow("read-only folder") << "";
        QTest::newRow("full disk") << "size=64k";
    }

    void failedSavesLeaveNothingBehind()
    {
        QFETCH(QString, mountOptions);
        QVERIFY(QDir().mkpath(m_album));
        QFile::setPermissions(m_album, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        std::optional<Mount> mount;
        if (!mountOptions.isEmpty() || canWriteIn(m_album)) {
            // Permissions do not stop root; a file system of its own does.
            QFile::setPermissions(m_album, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                               QFileDevice::ExeOwner);
            mount.emplace(m_album, mountOptions.isEmpty() ? "ro,size=64k" : mountOptions);
            if (!mount->mounted)
                QSKIP("cannot mount a small file system here (needs root)");
        }
        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        const auto large = m_metadata.merged(noisyJpeg(QSize(400, 300)), exposure());
        QVERIFY(large && large->size() > 64 * 1024);
        const QString result = saveInto(album, source("large.jpeg", *large));
        QVERIFY2(result.startsWith("failed: the photo could not be stored"), qPrintable(result));
        QCOMPARE(entries(m_album), QStringList());
    }

    void seesPhotosOtherProgramsAdd()
    {
        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        const QString first = saveInto(album, source("a.jpeg", loggedJpeg(m_metadata, exposure())));
        QTRY_COMPARE(album.loggedExposures().size(), 1);
        QVERIFY(QFile::copy(m_album + "/" + first, m_album + "/copied by hand.jpeg"));
        QTRY_COMPARE(album.loggedExposures().size(), 2);
        QVERIFY(QFile::remove(m_album + "/" + first));
        QTRY_COMPARE(album.loggedExposures().size(), 1);
        QTRY_COMPARE(album.loggedExposures().first().localIdentifier(), "copied by hand.jpeg");
    }
};

QTEST_GUILESS_MAIN(FolderPhotoLibraryTest)
#include "tst_folderphotolibrary.moc"
