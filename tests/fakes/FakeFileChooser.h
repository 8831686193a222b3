#pragma once

#include "FileChooser.h"

#include <QList>

namespace kova {

/// Answers with a path that a test sets, or as if the user cancelled.
class FakeFileChooser : public FileChooser {
public:
    std::optional<QString> answer;
    QList<FileChooserRequest> requests;

    std::optional<QString> chooseFile(const FileChooserRequest &request) override {
        requests.append(request);
        return answer;
    }
};

} // namespace kova
