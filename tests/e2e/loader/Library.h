#pragma once

#include <string>

namespace veldan {

class CWnd;

/// The product's library, loaded for as long as the object lives, and its four calls.
class Library {
public:
    explicit Library(const std::string& path);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] bool IsLoaded() const { return m_module != nullptr && m_init && m_show && m_hide && m_release; }
    /// Whether any of the library's file is mapped into the process.
    [[nodiscard]] static bool IsMapped();

    void Init(CWnd* parent, const std::string& base) const { m_init(parent, base.c_str()); }
    void Show(CWnd* host, int x, int y, unsigned message) const { m_show(host, x, y, message); }
    void Hide() const { m_hide(); }
    void Release() const { m_release(); }

private:
    template <class Function>
    void Find(Function*& function, const char* name) const;

    void* m_module = nullptr;
    void (*m_init)(CWnd*, const char*) = nullptr;
    void (*m_show)(CWnd*, int, int, unsigned) = nullptr;
    void (*m_hide)() = nullptr;
    void (*m_release)() = nullptr;
};

}  // namespace veldan
