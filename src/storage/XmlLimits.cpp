#include "storage/XmlLimits.h"

#include <cstddef>

namespace veldan {

namespace {

constexpr std::size_t kMostAttributes = 1024;  // of one tag
constexpr std::size_t kMostLevels = 256;

/// Tags, attributes, comments and the like. Each may take 300 bytes in the tree, the text behind it included.
constexpr std::size_t kMostPieces = 65'536;

/// One text, value, comment or the like, as it stands in the file. The parser has the same limit, but finds out late.
constexpr std::size_t kMostRun = 10'000'000;

/// The parser compares each attribute of a tag with the ones before it, and looks prefixes up among all namespaces that
/// it has met.
constexpr std::size_t kMostComparisons = 16'000'000;

/// Walks from one piece of markup to the next. It need not understand what is malformed: the parser refuses that at the
/// latest where this walk no longer agrees with it.
class Walk {
public:
    explicit Walk(std::string_view text) : m_text(text) {}

    const char* FindExcess() {
        while (!m_pszExcess && SkipPast("<")) {
            TakePiece();
        }
        return m_pszExcess;
    }

private:
    void TakePiece() {
        m_nPieces += 1;
        if (m_text.starts_with('?')) {
            SkipPast("?>");
        } else if (m_text.starts_with("!--")) {
            m_text.remove_prefix(3);
            SkipPast("-->");
        } else if (m_text.starts_with("![CDATA[")) {
            SkipPast("]]>");
        } else if (m_text.starts_with('!')) {
            m_pszExcess = "a document type isn't allowed";
        } else if (m_text.starts_with('/')) {
            m_nLevels -= m_nLevels > 0 ? 1 : 0;
            SkipPast(">");
        } else {
            TakeTag();
        }
        if (m_nPieces > kMostPieces) {
            m_pszExcess = "too many elements and attributes";
        }
    }

    /// Every attribute has a value in quotes, which may hold the bracket that ends a tag elsewhere.
    void TakeTag() {
        std::size_t attributes = 0;
        std::size_t at = m_text.find_first_of("\"'>");
        while (at != std::string_view::npos && m_text[at] != '>' && attributes <= kMostAttributes) {
            ++attributes;
            m_nNamespaces += m_text.substr(0, at).find("xmlns") == std::string_view::npos ? 0 : 1;
            const std::string_view quote = m_text.substr(at, 1);
            m_text.remove_prefix(at + 1);
            SkipPast(quote);
            at = m_text.find_first_of("\"'>");
        }
        const bool bCloses = at != std::string_view::npos && at > 0 && m_text[at - 1] == '/';
        SkipPast(">");
        Count(attributes);
        m_nLevels += bCloses ? 0 : 1;
    }

    void Count(std::size_t attributes) {
        m_nPieces += attributes;
        m_nComparisons += attributes * attributes + (attributes + 1) * (m_nNamespaces + m_nLevels);
        if (attributes > kMostAttributes) {
            m_pszExcess = "too many attributes in one tag";
        } else if (m_nLevels >= kMostLevels) {
            m_pszExcess = "too many levels of elements";
        } else if (m_nComparisons > kMostComparisons) {
            m_pszExcess = "too many attributes and namespaces";
        }
    }

    /// Goes on after the next such text. False, and at the end of all, where there is none.
    bool SkipPast(std::string_view end) {
        const std::size_t at = m_text.find(end);
        if (at > kMostRun && m_text.size() > kMostRun) {
            m_pszExcess = "too long a text";
        }
        m_text.remove_prefix(at == std::string_view::npos ? m_text.size() : at + end.size());
        return at != std::string_view::npos;
    }

    std::string_view m_text;
    std::size_t m_nLevels = 0;
    std::size_t m_nPieces = 0;
    std::size_t m_nComparisons = 0;
    std::size_t m_nNamespaces = 0;
    const char* m_pszExcess = nullptr;
};

}  // namespace

const char* FindXmlExcess(std::string_view text) {
    return Walk(text).FindExcess();
}

}  // namespace veldan
