#pragma once

#include "platform/core/Text.h"

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <string_view>

namespace veldan {

/// Takes the engine's messages on this thread while it stands, so that nothing is printed. The host may use the same
/// engine: its own handler and its last error are put back at the end.
class XmlMessages {
public:
    XmlMessages();
    ~XmlMessages();
    XmlMessages(const XmlMessages&) = delete;
    XmlMessages& operator=(const XmlMessages&) = delete;

    /// Whether something worse than a warning was told, and the first of it.
    [[nodiscard]] bool HasError() const { return m_bError; }
    [[nodiscard]] int GetLine() const { return m_nLine; }
    [[nodiscard]] const CString& GetText() const { return m_strText; }

private:
    static void Take(void* pThis, xmlError* pError);

    bool m_bError = false;
    int m_nLine = 0;
    CString m_strText;

    xmlStructuredErrorFunc m_pHostHandler;
    void* m_pHostContext;
    xmlError m_hostError = {};
};

[[nodiscard]] inline std::string_view ViewOf(const xmlChar* text) {
    return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

/// The engine's form of a text, which has to end in a NUL.
[[nodiscard]] inline const xmlChar* EngineText(const CString& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

/// The namespace of a prefix at an element, declared there where it isn't in scope; that of names without a prefix for
/// an empty one. Null where XML doesn't allow the two, and where the prefix stands for another namespace.
[[nodiscard]] xmlNs* FindOrDeclareXmlNs(xmlNode& element, std::string_view prefix, std::string_view namespaceUri);

}  // namespace veldan
