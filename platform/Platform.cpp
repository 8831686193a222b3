#include "Platform.h"

#include <QtGlobal>

namespace kova {

namespace {
const Platform *theInstalled = nullptr;
} // namespace

void Platform::install(const Platform &platform) {
    Q_ASSERT_X(theInstalled == nullptr, "Platform", "installed twice");
    theInstalled = &platform;
}

const Platform &Platform::installed() {
    Q_ASSERT_X(theInstalled != nullptr, "Platform",
               "a shared service was used before main installed the ports");
    return *theInstalled;
}

} // namespace kova
