#include "platform/store/inipreferencestore.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;

namespace {
void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

class IniPreferenceStoreTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_dir.emplace();
        QVERIFY(m_dir->isValid());
        m_path = m_dir->filePath("prefs.ini");
    }

    void valuesSurviveAReopen_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("reciprocal") << 1.0 / 1.26;
        QTest::newRow("tiny") << 1e-300;
    }

    void valuesSurviveAReopen()
    {
        QFETCH(double, value);
        {
            IniPreferenceStore store(m_path);
            store.setDouble("p.speed", value);
            store.setString("p.mode", "tv");
            store.setInteger("appStarts", 41);
            store.setBoolean("didPromptForReview", true);
        }
        const IniPreferenceStore reopened(m_path);
        QCOMPARE(reopened.doubleValue("p.speed"), value); // exactly, not nearly
        QCOMPARE(reopened.string("p.mode"), std::optional<QString>("tv"));
        QCOMPARE(reopened.integer("appStarts"), 41);
        QCOMPARE(reopened.boolean("didPromptForReview"), true);
    }

    void registeredValuesAreNeverWritten()
    {
        {
            IniPreferenceStore store(m_path);
            store.registerDefaults({{"default.iso", 100.0}, {"default.mode", "av"}});
            QCOMPARE(store.doubleValue("default.iso"), 100.0);
            QCOMPARE(store.string("default.mode"), std::optional<QString>("av"));
            QVERIFY(store.sync());
        }
        QVERIFY(!QFile::exists(m_path));
    }

    void absentValues()
    {
        const IniPreferenceStore store(m_dir->filePath("absent.ini"));
        QCOMPARE(store.string("nothing"), std::nullopt);
        QCOMPARE(store.doubleValue("nothing"), 0.0);
        QCOMPARE(store.integer("nothing"), 0);
        QCOMPARE(store.boolean("nothing"), false);
        QCOMPARE(store.array("nothing"), std::nullopt);
    }

    void unreadableValuesReadAsDefaults_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("trailing garbage") << QByteArray("[General]\ndefault.iso=100abc\n");
        QTest::newRow("empty") << QByteArray("[General]\ndefault.iso=\n");
        QTest::newRow("not finite") << QByteArray("[General]\ndefault.iso=nan\n");
        QTest::newRow("a list") << QByteArray("[General]\ndefault.iso=1, 2\n");
        QTest::newRow("a plain value is no array") << QByteArray("[General]\nprofiles=default\n");
        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage.append(char((i * 7919) % 256));
        QTest::newRow("binary garbage") << garbage;
    }

    void unreadableValuesReadAsDefaults()
    {
        QFETCH(QByteArray, contents);
        writeFile(m_path, contents);
        IniPreferenceStore store(m_path);
        store.registerDefaults({{"default.mode", "av"}, {"default.iso", 100.0}});
        QCOMPARE(store.string("default.mode"), std::optional<QString>("av"));
        QCOMPARE(store.doubleValue("default.iso"), 100.0);
        QCOMPARE(store.array("profiles"), std::nullopt);
    }

    void damagedFileIsReadNotRewrittenThenKeptAside_data()
    {
        QTest::addColumn<QByteArray>("damaged");
        QTest::newRow("cut off in a header") << QByteArray("[General]\ndefault.mode=tv\n[prof");
        QTest::newRow("binary bytes")
            << QByteArray("[General]\ndefault.mode=tv\n\x00\xff\xfe[[[\n\x80=\x01\n", 32);
    }

    void damagedFileIsReadNotRewrittenThenKeptAside()
    {
        QFETCH(QByteArray, damaged);
        writeFile(m_path, damaged);
        {
            IniPreferenceStore store(m_path);
            store.registerDefaults({{"default.iso", 100.0}});
            QCOMPARE(store.string("default.mode"), std::optional<QString>("tv"));
            QCOMPARE(store.doubleValue("default.iso"), 100.0);
            store.sync();
            QCOMPARE(readFile(m_path), damaged); // reading never rewrites

            store.setDouble("default.iso", 200.0);
            QVERIFY(store.sync()); // the damage read earlier is no failure to write
        }
        QCOMPARE(readFile(m_path + ".corrupt"), damaged);
        const IniPreferenceStore reopened(m_path);
        QCOMPARE(reopened.doubleValue("default.iso"), 200.0);
        QCOMPARE(reopened.string("default.mode"), std::optional<QString>("tv"));
    }

    void arrayOfMapsKeepsItsOrderAndReplacesALongerOne()
    {
        const QList<PreferenceStore::StringMap> maps = {
            {{"default", "Default"}},
            {{"0B6E1F5A-0000-4000-8000-00000000000A", "Hasselblad, 80 mm"}},
            {{"2", "Ünïcode = ok"}}};
        std::optional<QVariantList> written;
        {
            IniPreferenceStore store(m_path);
            store.setArrayOfMaps("profiles",
                                 maps + QList<PreferenceStore::StringMap>{{{"d", "D"}}});
            store.setArrayOfMaps("profiles", maps);
            written = store.array("profiles");
        }
        const auto array = IniPreferenceStore(m_path).array("profiles");
        QVERIFY(array.has_value());
        QCOMPARE(array, written);
        QCOMPARE(array->size(), 3);
        for (qsizetype i = 0; i < maps.size(); ++i) {
            const QVariantMap element = array->at(i).toMap();
            QCOMPARE(element.size(), 1);
            QCOMPARE(element.firstKey(), maps[i].firstKey());
            QCOMPARE(element.first().toString(), maps[i].first());
        }
    }

    void malformedArrayElementsArePassedOn()
    {
        writeFile(m_path, "[profiles]\n1\\default=Default\n2=plain\nsize=3\n");
        const IniPreferenceStore store(m_path);
        const auto array = store.array("profiles");
        QVERIFY(array.has_value());
        QCOMPARE(array->size(), 3);
        QCOMPARE(array->at(0).typeId(), QMetaType::QVariantMap);
        QCOMPARE(array->at(1).typeId(), QMetaType::QString);
        QCOMPARE(array->at(2), QVariant(QVariantMap())); // nothing under 3: an empty map
    }

    void unwritableFileFailsToSync()
    {
        writeFile(m_dir->filePath("missing-folder"), "a file where a folder should be");
        IniPreferenceStore store(m_dir->filePath("missing-folder/blocked.ini"));
        store.setString("default.mode", "m");
        QVERIFY(!store.sync());
    }

private:
    std::optional<QTemporaryDir> m_dir; // a fresh one for each test
    QString m_path;
};

QTEST_GUILESS_MAIN(IniPreferenceStoreTest)
#include "tst_inipreferencestore.moc"
