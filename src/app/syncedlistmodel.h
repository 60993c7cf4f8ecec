#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QSet>
#include <QtQmlIntegration/qqmlintegration.h>

#include <type_traits>

namespace kestrum {

/// A list model over a list that its owner replaces as a whole (the profile list, the
/// album, a scale), told to its views as the edits that happened, so that a list keeps
/// its scroll position, its delegates and its animations when one row comes, goes or
/// moves.
///
/// `sync` compares the rows by key: rows whose key is gone are removed, new keys are
/// inserted where they stand when the remaining rows kept their order, one row that
/// changed place is moved, and rows whose key stayed but whose contents changed are
/// reported as changed. Anything else (several rows reordered, reordering with rows
/// coming or going, repeated keys) resets the model.
class SyncedListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS // so that QML tools know the `count` of the models built on it
    Q_PROPERTY(int count READ count NOTIFY countChanged)

        public : using QAbstractListModel::QAbstractListModel;

    int count() const { return rowCount(); }

signals:
    void countChanged();

protected:
    /// Brings `rows`, the model's own copy of what its views show, to `next`. `keyOf`
    /// gives a row's identity; rows compare with `==` for their contents.
    template <typename Row, typename KeyOf>
    void sync(QList<Row>& rows, const QList<Row>& next, KeyOf keyOf);

private:
    template <typename Row, typename KeyOf>
    using KeyType = std::decay_t<std::invoke_result_t<KeyOf, const Row&>>;

    template <typename Row, typename KeyOf>
    static QList<KeyType<Row, KeyOf>> keys(const QList<Row>& rows, KeyOf keyOf);
    template <typename Row> void updateContents(QList<Row>& rows, const QList<Row>& next);
    template <typename Key>
    static bool moveOf(const QList<Key>& from, const QList<Key>& to, qsizetype* source,
                       qsizetype* destination);
};

template <typename Row, typename KeyOf>
QList<SyncedListModel::KeyType<Row, KeyOf>> SyncedListModel::keys(const QList<Row>& rows,
                                                                  KeyOf keyOf)
{
    QList<KeyType<Row, KeyOf>> result;
    result.reserve(rows.size());
    for (const Row& row : rows)
        result.append(keyOf(row));
    return result;
}

template <typename Row>
void SyncedListModel::updateContents(QList<Row>& rows, const QList<Row>& next)
{
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (!(rows[i] == next[i])) {
            rows[i] = next[i];
            emit dataChanged(index(int(i)), index(int(i)));
        }
    }
}

// Whether `to` is `from` with one element taken out and put back elsewhere; where from
// and to, in the terms of beginMoveRows.
template <typename Key>
bool SyncedListModel::moveOf(const QList<Key>& from, const QList<Key>& to, qsizetype* source,
                             qsizetype* destination)
{
    if (from.size() != to.size())
        return false;
    qsizetype first = 0;
    while (first < from.size() && from[first] == to[first])
        ++first;
    qsizetype last = from.size() - 1;
    while (last > first && from[last] == to[last])
        --last;
    if (first >= last)
        return false;
    const auto same = [&](qsizetype fromStart, qsizetype toStart, qsizetype length) {
        for (qsizetype i = 0; i < length; ++i) {
            if (!(from[fromStart + i] == to[toStart + i]))
                return false;
        }
        return true;
    };
    const qsizetype span = last - first;
    if (from[first] == to[last] && same(first + 1, first, span)) { // moved towards the end
        *source = first;
        *destination = last + 1;
        return true;
    }
    if (from[last] == to[first] && same(first, first + 1, span)) { // moved towards the start
        *source = last;
        *destination = first;
        return true;
    }
    return false;
}

template <typename Row, typename KeyOf>
void SyncedListModel::sync(QList<Row>& rows, const QList<Row>& next, KeyOf keyOf)
{
    const qsizetype countBefore = rows.size();
    const auto nextKeys = keys(next, keyOf);
    const QSet nextKeySet(nextKeys.cbegin(), nextKeys.cend());
    const auto ownKeys = keys(rows, keyOf);
    const QSet ownKeySet(ownKeys.cbegin(), ownKeys.cend());
    const bool unique = nextKeySet.size() == nextKeys.size() && ownKeySet.size() == ownKeys.size();

    qsizetype source = 0;
    qsizetype destination = 0;
    if (unique && ownKeys == nextKeys) {
        updateContents(rows, next);
    } else if (unique && moveOf(ownKeys, nextKeys, &source, &destination)) {
        beginMoveRows({}, int(source), int(source), {}, int(destination));
        rows.move(source, destination > source ? destination - 1 : destination);
        endMoveRows();
        updateContents(rows, next);
    } else {
        // The rows that stay must keep their order for removals and insertions to tell it.
        QList<KeyType<Row, KeyOf>> staying;
        for (const auto& key : ownKeys) {
            if (nextKeySet.contains(key))
                staying.append(key);
        }
        QList<KeyType<Row, KeyOf>> staysInNext;
        for (const auto& key : nextKeys) {
            if (ownKeySet.contains(key))
                staysInNext.append(key);
        }
        if (!unique || staying != staysInNext) {
            beginResetModel();
            rows = next;
            endResetModel();
        } else {
            for (qsizetype end = rows.size(); end > 0;) { // runs of removed rows, from the back
                if (nextKeySet.contains(keyOf(rows[end - 1]))) {
                    --end;
                    continue;
                }
                qsizetype start = end - 1;
                while (start > 0 && !nextKeySet.contains(keyOf(rows[start - 1])))
                    --start;
                beginRemoveRows({}, int(start), int(end - 1));
                rows.remove(start, end - start);
                endRemoveRows();
                end = start;
            }
            for (qsizetype i = 0; i < next.size();) { // runs of new rows, from the front
                if (ownKeySet.contains(nextKeys[i])) {
                    ++i;
                    continue;
                }
                qsizetype end = i + 1;
                while (end < next.size() && !ownKeySet.contains(nextKeys[end]))
                    ++end;
                beginInsertRows({}, int(i), int(end - 1));
                for (qsizetype j = i; j < end; ++j)
                    rows.insert(j, next[j]);
                endInsertRows();
                i = end;
            }
            updateContents(rows, next);
        }
    }
    if (rows.size() != countBefore)
        emit countChanged();
}

} // namespace kestrum
