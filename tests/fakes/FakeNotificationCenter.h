#pragma once

#include "NotificationCenter.h"

#include <QList>

namespace kova {

/// Keeps the requests; a test answers the question for permission when it likes.
class FakeNotificationCenter : public NotificationCenter {
public:
    QList<NotificationRequest> requests;
    int asked = 0;
    Authorized answer;
    std::function<void()> added = [] {}; ///< as soon as a request has come

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
