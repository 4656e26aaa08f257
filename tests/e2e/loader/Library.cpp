#include "e2e/loader/Library.h"

#include <dlfcn.h>

#include <fstream>

namespace veldan {

Library::Library(const std::string& path) : m_module(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (m_module != nullptr) {
        Find(m_init, "VELDAN_InitProfileMenus");
        Find(m_show, "VELDAN_ShowProfileMenus");
        Find(m_hide, "VELDAN_HideProfileMenus");
        Find(m_release, "VELDAN_ReleaseProfileMenus");
    }
}

Library::~Library() {
    if (m_module != nullptr) {
        dlclose(m_module);
    }
}

template <class Function>
void Library::Find(Function*& function, const char* name) const {
    function = reinterpret_cast<Function*>(dlsym(m_module, name));
}

bool Library::IsMapped() {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find("/libveldan.so") != std::string::npos) {
            return true;
        }
    }
    return false;
}

}  // namespace veldan
