#pragma once

#include "app/syncedlistmodel.h"
#include "exposure/exposurecomponent.h"
#include "exposure/scale.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace kestrum {

/// The entries of an exposure scale that a control offers (a strip of display texts, a
/// picker, the manual deviation's scale), in scale order, with the selection.
///
/// A control chooses by index: it shows the rows, and writes `currentIndex` with the row
/// the user picked; the model hands that row's entry to its owner (the meter, a
/// profile's limit). `currentIndex` is the row of the first entry equal to the owner's
/// current value, or −1 while that value is not on offer (an exposure error shows the
/// end of the full-stop table, which a cut or finer scale may not hold). Scales that only
/// show where a value stands (`selectable` false) point at the nearest entry instead and
/// ignore writes.
/// The base is named in full because QML tools match base classes by their full names.
class ExposureScaleModel : public kestrum::SyncedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("scales are offered by Meter and ProfileSettings")
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)
    Q_PROPERTY(bool selectable READ selectable CONSTANT)

public:
    enum Role {
        DisplayRole = Qt::UserRole + 1, ///< the text shown: "2.8", "1/125" as "125", "30s"
        SignedDisplayRole,              ///< with a leading "+" for a positive compensation
        ValueRole,                      ///< f-number, seconds, ISO speed or stops
        StepRole,                       ///< the entry's step: "full", "half" or "third"
        IdRole,                         ///< the entry's identity, e.g. "Aperturefull2.82828"
    };
    Q_ENUM(Role)

    /// Where a scale comes from: its entries, its owner's current value, and what picking
    /// an entry does (nothing for a scale that is only shown).
    template <typename C> struct Source {
        std::function<std::vector<C>()> entries;
        std::function<C()> current;
        std::function<void(const C&)> choose;
        bool nearest = false; ///< point at the entry nearest to the current value
    };

    template <typename C> explicit ExposureScaleModel(Source<C> source, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int currentIndex() const { return m_currentIndex; }
    void setCurrentIndex(int index);
    bool selectable() const { return bool(m_choose); }

    /// Reads the entries and the current value again.
    void refresh();

signals:
    void currentIndexChanged();

private:
    struct Row {
        QString id;
        QString display;
        QString signedDisplay;
        QString step;
        double value = 0.0;
        friend bool operator==(const Row&, const Row&) = default;
    };
    template <typename C> static Row rowOf(const C& entry)
    {
        return {entry.id(), entry.display, entry.signedDisplay(), rawValue(entry.type),
                entry.value};
    }
    void apply(const QList<Row>& rows, int currentIndex);

    std::function<void()> m_refresh;
    std::function<void(int)> m_choose;
    QList<Row> m_rows;
    int m_currentIndex = -1;
};

template <typename C>
ExposureScaleModel::ExposureScaleModel(Source<C> source, QObject* parent)
    : SyncedListModel(parent)
{
    // The entries as last read: a pick refers to what the control was shown.
    auto shown = std::make_shared<std::vector<C>>();
    m_refresh = [this, source, shown] {
        *shown = source.entries();
        QList<Row> rows;
        rows.reserve(qsizetype(shown->size()));
        for (const C& entry : *shown)
            rows.append(rowOf(entry));
        const C current = source.current();
        const C& pointed =
            source.nearest && !shown->empty() ? nearestEntry<C>(*shown, current.value) : current;
        const auto found = std::find(shown->cbegin(), shown->cend(), pointed);
        apply(rows, found == shown->cend() ? -1 : int(found - shown->cbegin()));
    };
    if (source.choose) {
        m_choose = [source, shown](int index) {
            if (index >= 0 && std::size_t(index) < shown->size())
                source.choose((*shown)[std::size_t(index)]);
        };
    }
    refresh();
}

} // namespace kestrum
