#pragma once

#include "NotificationCenter.h"

#include <QList>

namespace kova {

/// Records the requests. The test replies to the permission request.
class FakeNotificationCenter : public NotificationCenter {
public:
    QList<NotificationRequest> requests;
    int asked = 0;
    Authorized answer;
    std::function<void()> added = [] {}; ///< called for each request

    void requestAuthorization(Authorized answered) override {
        asked += 1;
        answer = std::move(answered);
    }
    void add(const NotificationRequest &request) override {
        requests.append(request);
        added();
    }
};

} // namespace kova
