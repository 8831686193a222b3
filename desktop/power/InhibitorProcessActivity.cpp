#include "InhibitorProcessActivity.h"

#include "IdleInhibitor.h"

namespace kova {

namespace {

class InhibitorToken : public ActivityToken {
public:
    InhibitorToken(MessageBuses &buses, const QString &reason) : m_inhibitor(buses) {
        m_inhibitor.acquire(reason);
    }

private:
    IdleInhibitor m_inhibitor;
};

} // namespace

std::unique_ptr<ActivityToken> InhibitorProcessActivity::beginUserInitiated(const QString &reason) {
    return std::make_unique<InhibitorToken>(m_buses, reason);
}

} // namespace kova
