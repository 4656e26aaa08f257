#include "storage/XmlEngine.h"

#include "storage/XmlText.h"
#include "storage/XmlTree.h"

#include <memory>

#include <libxml/uri.h>

namespace veldan {

namespace {

/// Whether the parser takes a text for the address of a namespace.
bool IsXmlAddress(const CString& text) {
    const std::unique_ptr<xmlURI, void (*)(xmlURI*)> pUri(xmlParseURI(text.c_str()), xmlFreeURI);
    return IsXmlText(text) && !text.empty() && pUri;
}

}  // namespace

XmlMessages::XmlMessages() : m_pHostHandler(xmlStructuredError), m_pHostContext(xmlStructuredErrorContext) {
    if (xmlErrorPtr pError = xmlGetLastError()) {
        xmlCopyError(pError, &m_hostError);
        xmlResetLastError();
    }
    xmlSetStructuredErrorFunc(this, Take);
}

XmlMessages::~XmlMessages() {
    xmlSetStructuredErrorFunc(m_pHostContext, m_pHostHandler);
    xmlResetLastError();
    if (m_hostError.code != XML_ERR_OK) {
        xmlCopyError(&m_hostError, &xmlLastError);
        xmlResetError(&m_hostError);
    }
}

void XmlMessages::Take(void* pThis, xmlError* pError) {
    auto& messages = *static_cast<XmlMessages*>(pThis);
    if (pError->level >= XML_ERR_ERROR && !messages.m_bError) {
        messages.m_bError = true;
        messages.m_nLine = pError->line;
        messages.m_strText = Trim(TextOrEmpty(pError->message));
    }
}

xmlNs* FindOrDeclareXmlNs(xmlNode& element, std::string_view prefix, std::string_view namespaceUri) {
    // Two namespaces are the language's own: one can't be declared, the other always is.
    constexpr std::string_view kXmlns = "http://www.w3.org/2000/xmlns/";
    const bool bXml = namespaceUri == ViewOf(XML_XML_NAMESPACE);
    const CString strPrefix(prefix);
    const CString strUri(namespaceUri);
    if (strUri == kXmlns || bXml != (prefix == "xml") || !IsXmlAddress(strUri)) {
        return nullptr;
    }
    if (!prefix.empty() && (!IsXmlName(prefix) || prefix == "xmlns")) {
        return nullptr;
    }
    const xmlChar* const pPrefix = prefix.empty() ? nullptr : EngineText(strPrefix);
    if (xmlNs* const pNs = xmlSearchNs(element.doc, &element, pPrefix)) {
        return ViewOf(pNs->href) == namespaceUri ? pNs : nullptr;
    }
    return xmlNewNs(&element, EngineText(strUri), pPrefix);
}

void XmlTree::Free::operator()(_xmlDoc* pFreed) const {
    xmlFreeDoc(pFreed);
}

}  // namespace veldan
