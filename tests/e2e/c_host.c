/* A host in plain C: it makes the menu, which has no window of the host to be shown for, and releases it, twice. */

#include "veldan/veldan.h"

#include <stddef.h>

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    for (int i = 0; i < 2; ++i) {
        VELDAN_InitProfileMenus(NULL, argv[1]);
        VELDAN_ShowProfileMenus(NULL, 100, 100, 1234);
        VELDAN_HideProfileMenus();
        VELDAN_ReleaseProfileMenus();
    }
    return 0;
}
