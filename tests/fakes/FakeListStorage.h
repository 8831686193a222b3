#pragma once

#include "ListStorage.h"

namespace kova {

/// A list in memory. It is written when something asks for it, like the newest one of a disk that is slow.
class FakeListStorage : public ListStorage {
public:
    int writes = 0;
    QStringList unreadable; ///< the reasons

    std::optional<QByteArray> stored() {
        if (m_pending) {
            m_stored = std::exchange(m_pending, nullptr)();
        }
        return m_stored;
    }
    void store(const QByteArray &bytes) {
        m_pending = nullptr;
        m_stored = bytes;
    }

    std::optional<QByteArray> read() override { return stored(); }
    void write(Encoder encode) override {
        writes += 1;
        m_pending = std::move(encode);
    }
    void markUnreadable(const QString &reason) override { unreadable.append(reason); }

private:
    std::optional<QByteArray> m_stored;
    Encoder m_pending;
};

} // namespace kova
