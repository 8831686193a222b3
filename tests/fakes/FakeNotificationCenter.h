#pragma once

#include "NotificationCenter.h"

#include <QList>

namespace kova {

/// Keeps the requests; a test answers the question for permission when it likes.
class FakeNotificationCenter : public NotificationCenter {
public:
    QList<NotificationRequest> requests;
    QList<AuthorizationOptions> asked;
    Authorized answer;

    void requestAuthorization(AuthorizationOptions options, Authorized answered) override {
        asked.append(options);
        answer = std::move(answered);
    }
    void add(const NotificationRequest &request) override { requests.append(request); }
};

} // namespace kova
