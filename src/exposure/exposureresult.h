#pragma once

#include "exposureerror.h"

#include <variant>

namespace kestrum {

/// The outcome of an exposure computation: the entry to use, or why there is none.
template <typename C> class ExposureResult {
public:
    ExposureResult(C entry)
        : m_outcome(std::move(entry))
    {}
    ExposureResult(ExposureError error)
        : m_outcome(error)
    {}

    bool hasEntry() const { return std::holds_alternative<C>(m_outcome); }
    /// The entry; only valid when `hasEntry()`.
    const C& entry() const { return std::get<C>(m_outcome); }
    /// The error; only valid when not `hasEntry()`.
    ExposureError error() const { return std::get<ExposureError>(m_outcome); }

    friend bool operator==(const ExposureResult&, const ExposureResult&) = default;

private:
    std::variant<C, ExposureError> m_outcome;
};

} // namespace kestrum
