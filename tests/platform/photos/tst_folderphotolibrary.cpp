#include "support/testphotos.h"

#include "album/photoalbum.h"
#include "platform/photos/folderphotolibrary.h"

#include <QDir>
#include <QDirIterator>
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

// Every file under `folder`, hidden ones too, by relative path.
QStringList tree(const QString& folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(QDir(folder).relativeFilePath(it.next()));
    files.sort();
    return files;
}

bool canWriteIn(const QString& folder)
{
    QFile probe(folder + "/.probe");
    const bool written = probe.open(QIODevice::WriteOnly);
    probe.remove();
    return written;
}

} // namespace

// The photo library as a folder: permission, safe copies, dates, damage, outside changes,
// tidying up after earlier runs.
class FolderPhotoLibraryTest : public QObject {
    Q_OBJECT

    const Exiv2ImageMetadata m_metadata;
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
    QString m_album;

    ImageProperties exposure() const { return exposureMetadata("200", "2.8", "500", 0.33); }
    QByteArray logged() const { return loggedJpeg(m_metadata, exposure()); }

    // Saves `bytes`, written to `name` outside the library; the new name, or why not.
    QString saveInto(PhotoAlbum& album, const QString& name, const QByteArray& bytes)
    {
        writeFile(m_dir->filePath(name), bytes);
        const auto saved = album.save(QUrl::fromLocalFile(m_dir->filePath(name)));
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
        m_root = m_dir->filePath("home/Pictures");
        m_album = m_root + "/Kestrum";
    }

    void cleanup() { QThreadPool::globalInstance()->waitForDone(); }

    void authorization_data()
    {
        QTest::addColumn<QString>("rootAt"); // where the library goes, in the dir
        QTest::addColumn<QString>("fileAt"); // a file in the way, or empty
        QTest::addColumn<QString>("linkAt"); // a link to nowhere in the way, or empty
        QTest::addColumn<Authorization>("before");
        QTest::addColumn<Authorization>("after");
        const QString pictures = "home/Pictures", none;
        using enum PhotoLibraryAuthorization;
        QTest::newRow("not made yet") << pictures << none << none << notDetermined << authorized;
        QTest::newRow("a file where the library goes")
            << pictures << pictures << none << denied << denied;
        QTest::newRow("a file where its parent goes")
            << pictures << "home" << none << denied << denied;
        QTest::newRow("a link to nowhere where the library goes")
            << pictures << none << pictures << denied << denied;
        QTest::newRow("a name too long to make")
            << "home/" + QString(300, 'x') << none << none << notDetermined << denied;
    }

    void authorization()
    {
        QFETCH(QString, rootAt);
        QFETCH(QString, fileAt);
        QFETCH(QString, linkAt);
        QFETCH(Authorization, after);
        const QString blocker = m_dir->filePath(fileAt + linkAt);
        QVERIFY(QDir().mkpath(QFileInfo(blocker).path()));
        if (!fileAt.isEmpty())
            QVERIFY(writeFile(blocker, "x"));
        if (!linkAt.isEmpty())
            QVERIFY(QFile::link(m_dir->filePath("nowhere"), blocker));
        const QString root = m_dir->filePath(rootAt);
        FolderPhotoLibrary library(root, m_metadata);
        QTEST(library.authorizationStatus(), "before");
        QCOMPARE(library.requestAuthorization().result(), after);
        QCOMPARE(library.authorizationStatus(), after);
        QCOMPARE(QFileInfo(root).isDir(), after == Authorization::authorized);

        // Denied, the first log fails with "no permission" rather than asking forever.
        PhotoAlbum album(library, m_metadata);
        const QString saved = saveInto(album, "a.jpeg", logged());
        QCOMPARE(saved.startsWith("failed: no permission"), after == Authorization::denied);
    }

    void savesDatedCopiesUnderNewNamesAndKeepsAPhotosOwnDate()
    {
        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        const QString first = saveInto(album, "Kestrum.jpeg", logged());
        const QString second = saveInto(album, "Kestrum.jpeg", logged());

        QVERIFY2(first.endsWith(".jpeg") && second.endsWith(".jpeg"), qPrintable(first + second));
        QCOMPARE(tree(m_album), (QStringList{first, second}));
        QCOMPARE(QFileInfo(m_album + "/" + first).permissions() & QFileDevice::ReadOther,
                 QFileDevice::ReadOther);
        QFile original(m_dir->filePath("Kestrum.jpeg")); // left as it was
        QVERIFY(original.open(QIODevice::ReadOnly));
        QCOMPARE(original.readAll(), logged());
        const auto stored = m_metadata.fileProperties(m_album + "/" + first);
        QVERIFY(stored->value(key::kExifDictionary).toMap().contains(key::kDateTimeOriginal));
        QTRY_COMPARE(identifiers(album), (QStringList{second, first}));

        // A photo that carries its own date keeps it, and sorts after those dated now.
        const auto old = m_metadata.merged(
            logged(),
            {{key::kExifDictionary, QVariantMap{{key::kDateTimeOriginal, "2020:01:02 03:04:05"}}}});
        const QString fromBefore = saveInto(album, "old.jpeg", old.value_or(QByteArray()));
        QTRY_COMPARE(identifiers(album), (QStringList{second, first, fromBefore}));
        QCOMPARE(album.loggedExposures().at(2).date(),
                 QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)));
    }

    void skipsFilesItCannotReadUntilTheyCan()
    {
        QVERIFY(QDir().mkpath(m_album));
        const auto large = m_metadata.merged(noisyJpeg(QSize(200, 150)), exposure());
        QVERIFY(writeFile(m_album + "/logged.jpeg", logged()));
        QVERIFY(writeFile(m_album + "/.hidden.jpeg", logged())); // hidden: not a photo
        QVERIFY(writeFile(m_album + "/logged.txt", logged()));   // no image suffix: neither
        QVERIFY(writeFile(m_album + "/empty.jpeg", {}));
        QVERIFY(writeFile(m_album + "/truncated.jpeg", large->left(large->size() - 1000)));

        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        QTRY_COMPARE(identifiers(album), QStringList{"logged.jpeg"});
        const auto empty = album.fullSizeImage("empty.jpeg");
        QTRY_VERIFY(empty.isFinished());
        QVERIFY(!empty.result());

        // A copy written in parts (scp, say) shows once it is whole.
        QTRY_VERIFY(album.loading().isFinished());
        QSignalSpy reloaded(&album, &PhotoAlbum::loggedExposuresChanged);
        const QString slow = m_album + "/slow.jpeg";
        QVERIFY(writeFile(slow, large->left(large->size() / 2)));
        QVERIFY(reloaded.wait()); // read while still in parts
        QFile rest(slow);
        QVERIFY(rest.open(QIODevice::Append));
        QVERIFY(rest.write(large->mid(large->size() / 2)) > 0);
        rest.close();
        QTRY_COMPARE(identifiers(album), (QStringList{"slow.jpeg", "logged.jpeg"}));
    }

    void startUpTidiesUp_data()
    {
        QTest::addColumn<QStringList>("before"); // in the library; "@S": S seconds old
        QTest::addColumn<QStringList>("after");
        QTest::newRow("the former album's photos move up under free names")
            << QStringList{"Kestrum/Kestrum/a.jpeg", "Kestrum/Kestrum/b.jpeg", "Kestrum/b.jpeg"}
            << QStringList{"Kestrum/a.jpeg", "Kestrum/b-1.jpeg", "Kestrum/b.jpeg"};
        QTest::newRow("the former album keeps what is not a photo")
            << QStringList{"Kestrum/Kestrum/a.jpeg", "Kestrum/Kestrum/notes.txt"}
            << QStringList{"Kestrum/Kestrum/notes.txt", "Kestrum/a.jpeg"};
        QTest::newRow("temporary files older than a minute go")
            << QStringList{"Kestrum/.kestrum-old.part@90", "Kestrum/.kestrum-new.part@10",
                           "Kestrum/.other.part@90", "Holiday/.kestrum-old.part@600",
                           "Kestrum/Kestrum/.kestrum-old.part@90"}
            << QStringList{"Kestrum/.kestrum-new.part", "Kestrum/.other.part"};
    }

    void startUpTidiesUp()
    {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        for (const QString& entry : before) {
            const QString path = m_root + "/" + entry.section('@', 0, 0);
            QVERIFY(QDir().mkpath(QFileInfo(path).path()));
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(path.toUtf8()) > 0 &&
                    file.flush());
            const int ageS = entry.section('@', 1).toInt();
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-ageS),
                                     QFileDevice::FileModificationTime));
        }
        FolderPhotoLibrary library(m_root, m_metadata);
        QCOMPARE(tree(m_root), after);
        QCOMPARE(QFileInfo::exists(m_album + "/Kestrum"),
                 after.filter("Kestrum/Kestrum/").size() > 0);
    }

    // Made after start-up (as kestrum-cli log makes it), or deleted and made again.
    void followsTheAlbumFolder_data()
    {
        QTest::addColumn<bool>("libraryExists");
        QTest::newRow("album made later") << true;
        QTest::newRow("library made later") << false;
    }

    void followsTheAlbumFolder()
    {
        QFETCH(bool, libraryExists);
        QVERIFY(!libraryExists || QDir().mkpath(m_root));
        FolderPhotoLibrary library(m_root, m_metadata);
        PhotoAlbum album(library, m_metadata);
        QVERIFY(QDir().mkpath(m_album) && writeFile(m_album + "/first.jpeg", logged()));
        QTRY_COMPARE(identifiers(album), QStringList{"first.jpeg"});
        // Copied by hand, and the first removed.
        QVERIFY(QFile::copy(m_album + "/first.jpeg", m_album + "/copy.jpeg"));
        QVERIFY(QFile::remove(m_album + "/first.jpeg"));
        QTRY_COMPARE(identifiers(album), QStringList{"copy.jpeg"});
        QVERIFY(QDir(m_album).removeRecursively());
        QVERIFY(QDir().mkpath(m_album) && writeFile(m_album + "/second.jpeg", logged()));
        QTRY_COMPARE(identifiers(album), QStringList{"second.jpeg"});

        // Deleted under a save, the folder is made again by it.
        QVERIFY(QDir(m_album).removeRecursively());
        const QString saved = saveInto(album, "third.jpeg", logged());
        QVERIFY2(QFileInfo(m_album + "/" + saved).isFile(), qPrintable(saved));
        QTRY_COMPARE(identifiers(album), QStringList{saved});
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
        const QString result = saveInto(album, "large.jpeg", *large);
        QVERIFY2(result.startsWith("failed: the photo could not be stored"), qPrintable(result));
        QCOMPARE(tree(m_album), QStringList());
    }
};

QTEST_GUILESS_MAIN(FolderPhotoLibraryTest)
#include "tst_folderphotolibrary.moc"
