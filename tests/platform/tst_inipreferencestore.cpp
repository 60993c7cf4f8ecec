#include "platform/inipreferencestore.h"

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
    void init() { QVERIFY(m_dir.isValid()); }

    void valuesSurviveAReopen_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("fastest speed") << 0.0001220703125;
        QTest::newRow("reciprocal") << 1.0 / 1.26;
        QTest::newRow("negative") << -2.66;
        QTest::newRow("tiny") << 1e-300;
    }

    void valuesSurviveAReopen()
    {
        QFETCH(double, value);
        const QString path = m_dir.filePath("reopen.ini");
        {
            IniPreferenceStore store(path);
            store.setDouble("p.speed", value);
            store.setString("p.mode", "tv");
            store.setInteger("appStarts", 41);
            store.setBoolean("didPromptForReview", true);
        }
        const IniPreferenceStore reopened(path);
        QCOMPARE(reopened.doubleValue("p.speed"), value); // exactly, not nearly
        QCOMPARE(reopened.string("p.mode"), std::optional<QString>("tv"));
        QCOMPARE(reopened.integer("appStarts"), 41);
        QCOMPARE(reopened.boolean("didPromptForReview"), true);
    }

    void registeredValuesAreNeverWritten()
    {
        const QString path = m_dir.filePath("registered.ini");
        {
            IniPreferenceStore store(path);
            store.registerDefaults({{"default.iso", 100.0}, {"default.mode", "av"}});
            QCOMPARE(store.doubleValue("default.iso"), 100.0);
            QCOMPARE(store.string("default.mode"), std::optional<QString>("av"));
            QVERIFY(store.sync());
        }
        QVERIFY(!QFile::exists(path));
    }

    void absentValues()
    {
        const IniPreferenceStore store(m_dir.filePath("absent.ini"));
        QCOMPARE(store.string("nothing"), std::nullopt);
        QCOMPARE(store.doubleValue("nothing"), 0.0);
        QCOMPARE(store.integer("nothing"), 0);
        QCOMPARE(store.boolean("nothing"), false);
        QCOMPARE(store.array("nothing"), std::nullopt);
    }

    void unparsableValuesReadAsAbsent_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("words") << QByteArray("default.iso=lots");
        QTest::newRow("trailing garbage") << QByteArray("default.iso=100abc");
        QTest::newRow("empty") << QByteArray("default.iso=");
        QTest::newRow("not finite") << QByteArray("default.iso=nan");
        QTest::newRow("a list") << QByteArray("default.iso=1, 2");
    }

    void unparsableValuesReadAsAbsent()
    {
        QFETCH(QByteArray, line);
        const QString path = m_dir.filePath("unparsable.ini");
        writeFile(path, "[General]\n" + line + "\n");
        IniPreferenceStore store(path);
        store.registerDefaults({{"default.iso", 100.0}});
        QCOMPARE(store.doubleValue("default.iso"), 100.0);
    }

    void damagedFileIsReadNotRewrittenThenKeptAside()
    {
        const QString path = m_dir.filePath("damaged.ini");
        // A write cut short inside a section header.
        const QByteArray damaged("[General]\ndefault.mode=tv\n[prof");
        writeFile(path, damaged);
        {
            IniPreferenceStore store(path);
            store.registerDefaults({{"default.iso", 100.0}});
            QCOMPARE(store.string("default.mode"), std::optional<QString>("tv"));
            QCOMPARE(store.doubleValue("default.iso"), 100.0);
            store.sync();
            QCOMPARE(readFile(path), damaged); // reading never rewrites

            store.setDouble("default.iso", 200.0);
        }
        QCOMPARE(readFile(path + ".corrupt"), damaged);
        QCOMPARE(IniPreferenceStore(path).doubleValue("default.iso"), 200.0);
    }

    void binaryGarbageReadsAsDefaults()
    {
        const QString path = m_dir.filePath("garbage.ini");
        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage.append(char((i * 7919) % 256));
        writeFile(path, garbage);
        IniPreferenceStore store(path);
        store.registerDefaults({{"default.mode", "av"}, {"default.iso", 100.0}});
        QCOMPARE(store.string("default.mode"), std::optional<QString>("av"));
        QCOMPARE(store.doubleValue("default.iso"), 100.0);
        QCOMPARE(store.array("profiles"), std::nullopt);
    }

    void arrayOfMapsKeepsItsOrder()
    {
        const QString path = m_dir.filePath("array.ini");
        const QList<PreferenceStore::StringMap> maps = {
            {{"default", "Default"}},
            {{"0B6E1F5A-0000-4000-8000-00000000000A", "Hasselblad, 80 mm"}},
            {{"2", "Ünïcode = ok"}}};
        {
            IniPreferenceStore store(path);
            store.setArrayOfMaps("profiles", maps);
        }
        const IniPreferenceStore reopened(path);
        const auto array = reopened.array("profiles");
        QVERIFY(array.has_value());
        QCOMPARE(array->size(), 3);
        for (qsizetype i = 0; i < maps.size(); ++i) {
            const QVariantMap element = array->at(i).toMap();
            QCOMPARE(element.size(), 1);
            QCOMPARE(element.firstKey(), maps[i].firstKey());
            QCOMPARE(element.first().toString(), maps[i].first());
        }
    }

    void shorterArrayReplacesALongerOne()
    {
        IniPreferenceStore store(m_dir.filePath("replace.ini"));
        store.setArrayOfMaps("profiles", {{{"a", "A"}}, {{"b", "B"}}, {{"c", "C"}}});
        store.setArrayOfMaps("profiles", {{{"b", "B"}}});
        QCOMPARE(store.array("profiles")->size(), 1);
        QCOMPARE(store.array("profiles")->at(0).toMap().firstKey(), "b");
    }

    void malformedArrayElementsArePassedOn()
    {
        const QString path = m_dir.filePath("malformed.ini");
        writeFile(path, "[profiles]\n1\\default=Default\n2=plain\nsize=3\n");
        const IniPreferenceStore store(path);
        const auto array = store.array("profiles");
        QVERIFY(array.has_value());
        QCOMPARE(array->size(), 3);
        QCOMPARE(array->at(0).typeId(), QMetaType::QVariantMap);
        QCOMPARE(array->at(1).typeId(), QMetaType::QString);
        QVERIFY(!array->at(2).isValid());
    }

    void plainValueIsNoArray()
    {
        const QString path = m_dir.filePath("plain.ini");
        writeFile(path, "[General]\nprofiles=default\n");
        QCOMPARE(IniPreferenceStore(path).array("profiles"), std::nullopt);
    }

    void unwritableFileFailsToSync()
    {
        const QString path = m_dir.filePath("missing-folder/blocked.ini");
        writeFile(m_dir.filePath("missing-folder"), "a file where a folder should be");
        IniPreferenceStore store(path);
        store.setString("default.mode", "m");
        QVERIFY(!store.sync());
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(IniPreferenceStoreTest)
#include "tst_inipreferencestore.moc"
