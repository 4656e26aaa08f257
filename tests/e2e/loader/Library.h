#pragma once

#include "veldan/veldan.h"

#include <dlfcn.h>

#include <string>

namespace veldan {

/// The library with its four functions, loaded for the life of the object.
class Library {
public:
    explicit Library(const std::string& path) : m_module(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (m_module != nullptr) {
            Find(Init, "VELDAN_InitProfileMenus");
            Find(Show, "VELDAN_ShowProfileMenus");
            Find(Hide, "VELDAN_HideProfileMenus");
            Find(Release, "VELDAN_ReleaseProfileMenus");
        }
    }
    ~Library() {
        if (m_module != nullptr) {
            dlclose(m_module);
        }
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] bool IsLoaded() const { return Init && Show && Hide && Release; }

    decltype(&VELDAN_InitProfileMenus) Init = nullptr;
    decltype(&VELDAN_ShowProfileMenus) Show = nullptr;
    decltype(&VELDAN_HideProfileMenus) Hide = nullptr;
    decltype(&VELDAN_ReleaseProfileMenus) Release = nullptr;

private:
    template <class Function>
    void Find(Function*& function, const char* name) const {
        function = reinterpret_cast<Function*>(dlsym(m_module, name));
    }

    void* m_module;
};

}  // namespace veldan
