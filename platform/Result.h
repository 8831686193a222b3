#pragma once

#include <QString>
#include <utility>
#include <variant>

namespace kova {

/// The reason why an operation returned no value.
template <typename E> struct Failure { E reason; };
template <typename E> Failure(E) -> Failure<E>;

/// A value, or the reason why there is none.
template <typename T, typename E = QString> class Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Failure<E> failure) : m_state(std::in_place_index<1>, std::move(failure.reason)) {}

    explicit operator bool() const { return m_state.index() == 0; }
    const T &value() const & { return std::get<0>(m_state); }
    T &&value() && { return std::get<0>(std::move(m_state)); }
    const E &error() const { return std::get<1>(m_state); }

private:
    std::variant<T, E> m_state;
};

} // namespace kova
