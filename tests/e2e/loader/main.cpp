#include "e2e/loader/Host.h"

#include <cstdlib>
#include <string_view>

/// A host that loads the library by its path, as a plug-in:  e2e-loader LIBRARY BASE WHAT [ROUNDS]
int main(int argc, char** argv) {
    if (argc < 4) {
        return 2;
    }
    const std::string library = argv[1];
    const std::string base = argv[2];
    const std::string_view what = argv[3];
    if (what == "rounds" && argc == 5) {
        return veldan::PlayRounds(library, base, std::atoi(argv[4]));
    }
    if (what == "calls") {
        return veldan::PlayCalls(library, base);
    }
    if (what == "loss" || what == "noticed-loss") {
        return veldan::PlayLoss(library, base, what == "noticed-loss");
    }
    return what == "once" ? veldan::PlayOnce(library, base) : 2;
}
