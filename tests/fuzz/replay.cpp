// Runs a fuzz target once for every file in the given folders, none of which may be empty.

#include "require.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char *argv[]) {
    for (int i = 1; i < argc; ++i) {
        int inputs = 0;
        std::error_code failure;
        for (const auto &entry : std::filesystem::directory_iterator(argv[i], failure)) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout); // names the input that fails
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
            inputs += 1;
        }
        if (inputs == 0) {
            std::fprintf(stderr, "replay: no inputs in %s\n", argv[i]);
            return 1;
        }
    }
    return argc > 1 ? 0 : 1;
}
