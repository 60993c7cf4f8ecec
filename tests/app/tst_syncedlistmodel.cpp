#include "app/syncedlistmodel.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace kestrum;

namespace {

struct Row {
    QString key;
    QString text;
    friend bool operator==(const Row&, const Row&) = default;
};

// "a b=B c": rows keyed a, b and c, b with the text "B" (the others with their key).
QList<Row> rows(const QString& words)
{
    QList<Row> result;
    for (const QString& word : words.split(u' ', Qt::SkipEmptyParts)) {
        const QStringList parts = word.split(u'=');
        result.append({parts.front(), parts.back()});
    }
    return result;
}

class RowModel : public SyncedListModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || role != Qt::DisplayRole)
            return {};
        const Row& row = m_rows[index.row()];
        return row.key == row.text ? row.key : row.key + u'=' + row.text;
    }
    void show(const QList<Row>& next)
    {
        sync(m_rows, next, [](const Row& row) { return row.key; });
    }

private:
    QList<Row> m_rows;
};

QString shown(const QAbstractItemModel& model)
{
    QStringList words;
    for (int row = 0; row < model.rowCount(); ++row)
        words.append(model.index(row, 0).data().toString());
    return words.join(u' ');
}

} // namespace

// What a view is told when the list under a model is replaced.
class SyncedListModelTest : public QObject {
    Q_OBJECT

private slots:
    void tellsTheEdit_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("told");
        const auto row = [](const char* tag, const char* before, const char* after,
                            const char* told) {
            QTest::newRow(tag) << QString(before) << QString(after) << QString(told);
        };
        row("unchanged", "a b c", "a b c", "");
        row("renamed", "a b c", "a b=B c", "changed 1");
        row("appended", "a b", "a b c", "inserted 2-2");
        row("new on top", "a b", "c d a b", "inserted 0-1");
        row("filled", "", "a b", "inserted 0-1");
        row("removed run", "a b c d", "a d", "removed 1-2");
        row("emptied", "a b", "", "removed 0-1");
        row("removed and added", "a b c d", "x a c=C",
            "removed 3-3; removed 1-1; inserted 0-0; changed 2");
        row("moved towards the end", "a b c d", "a c d b", "moved 1 to 4");
        row("moved towards the start", "a b c d", "a d=D b c", "moved 3 to 1; changed 1");
        row("neighbours swapped", "a b c", "b a c", "moved 0 to 2");
        row("two moves", "a b c d", "b a d c", "reset");
        row("moved and removed", "a b c d", "c a b", "reset");
        row("repeated key", "a b", "a a", "reset");
    }

    void tellsTheEdit()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(QString, told);
        RowModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.show(rows(before));

        QStringList log;
        const auto range = [](const char* what, int first, int last) {
            return QStringLiteral("%1 %2-%3").arg(QLatin1String(what)).arg(first).arg(last);
        };
        connect(&model, &QAbstractItemModel::rowsInserted, this,
                [&](const QModelIndex&, int first, int last) {
                    log.append(range("inserted", first, last));
                });
        connect(&model, &QAbstractItemModel::rowsRemoved, this,
                [&](const QModelIndex&, int first, int last) {
                    log.append(range("removed", first, last));
                });
        connect(&model, &QAbstractItemModel::rowsMoved, this,
                [&](const QModelIndex&, int first, int, const QModelIndex&, int destination) {
                    log.append(QStringLiteral("moved %1 to %2").arg(first).arg(destination));
                });
        connect(&model, &QAbstractItemModel::modelReset, this, [&] { log.append("reset"); });
        connect(&model, &QAbstractItemModel::dataChanged, this, [&](const QModelIndex& topLeft) {
            log.append(QStringLiteral("changed %1").arg(topLeft.row()));
        });
        int countChanges = 0;
        connect(&model, &SyncedListModel::countChanged, this, [&] { ++countChanges; });

        model.show(rows(after));

        QCOMPARE(log.join(QStringLiteral("; ")), told);
        QCOMPARE(shown(model), after);
        QCOMPARE(countChanges, rows(before).size() == rows(after).size() ? 0 : 1);
    }
};

QTEST_GUILESS_MAIN(SyncedListModelTest)
#include "tst_syncedlistmodel.moc"
