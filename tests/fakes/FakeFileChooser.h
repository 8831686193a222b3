#pragma once

#include "FileChooser.h"

#include <QList>

namespace kova {

/// Returns a path set by the test, or cancels.
class FakeFileChooser : public FileChooser {
public:
    std::optional<QString> answer;
    QList<FileChooserRequest> requests;
    std::function<void()> meanwhile = [] {}; ///< called while the dialog is open
    int cancellations = 0;

    std::optional<QString> chooseFile(const FileChooserRequest &request) override {
        requests.append(request);
        meanwhile();
        return answer;
    }

    void cancel() override { cancellations += 1; }
};

} // namespace kova
