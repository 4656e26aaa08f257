#include "storage/XmlReader.h"

#include "storage/XmlEncoding.h"
#include "storage/XmlEngine.h"
#include "storage/XmlLimits.h"
#include "storage/XmlText.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <libxml/SAX2.h>
#include <libxml/parser.h>

namespace veldan {

namespace {

/// What the parser reads from. After an error the text ends: the parser would go on to collect errors, and a text can
/// have as many as it has bytes.
struct Source {
    std::string_view rest;
    const XmlMessages& messages;

    static int Read(void* pThis, char* pBytes, int count) {
        auto& source = *static_cast<Source*>(pThis);
        if (source.messages.HasError()) {
            return 0;
        }
        const std::size_t taken = std::min(source.rest.size(), static_cast<std::size_t>(std::max(count, 0)));
        std::memcpy(pBytes, source.rest.data(), taken);
        source.rest.remove_prefix(taken);
        return static_cast<int>(taken);
    }
};

struct FreeParser {
    void operator()(xmlParserCtxt* pParser) const {
        xmlFreeDoc(pParser->myDoc);
        xmlFreeParserCtxt(pParser);
    }
};

/// A parser that depends on none of the defaults that the host may have set for its own.
std::unique_ptr<xmlParserCtxt, FreeParser> MakeParser(Source& source) {
    std::unique_ptr<xmlParserCtxt, FreeParser> pParser(
        xmlCreateIOParserCtxt(nullptr, nullptr, Source::Read, nullptr, &source, XML_CHAR_ENCODING_NONE));
    if (pParser) {
        // The text is UTF-8 by now, whatever its declaration says. Without NOENT an ampersand in the address of a
        // namespace would come out as a reference.
        xmlCtxtUseOptions(pParser.get(),
                          XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_IGNORE_ENC | XML_PARSE_BIG_LINES);
        pParser->keepBlanks = 1;
        pParser->sax->ignorableWhitespace = xmlSAX2Characters;
        // Without a document type, ids are of no use; those of `xml:id` would be recorded.
        pParser->loadsubset = XML_SKIP_IDS;
    }
    return pParser;
}

bool IsSpace(const xmlNode& node) {
    return node.type == XML_TEXT_NODE && IsXmlSpace(ViewOf(node.content));
}

void DropSpace(xmlNode& root) {
    for (xmlNode* pNode = root.children; pNode;) {
        xmlNode* const pNext = pNode->next;
        if (IsSpace(*pNode)) {
            xmlUnlinkNode(pNode);
            xmlFreeNode(pNode);
        }
        pNode = pNext;
    }
}

CString LineEndOf(std::string_view text) {
    const std::size_t at = text.find('\n');
    return at == std::string_view::npos || (at > 0 && text[at - 1] == '\r') ? "\r\n" : "\n";
}

/// Empty where the parser has something to say about the document.
std::unique_ptr<xmlDoc, XmlTree::Free> Parse(std::string_view text, XmlFault& fault) {
    const XmlMessages messages;
    Source source{text, messages};
    const auto pParser = MakeParser(source);
    if (!pParser) {
        return nullptr;
    }
    xmlParseDocument(pParser.get());
    if (messages.HasError()) {
        fault = {messages.GetLine(), messages.GetText()};
    }
    const bool bGood = pParser->wellFormed != 0 && pParser->nsWellFormed != 0 && pParser->errNo == XML_ERR_OK &&
                       !messages.HasError() && xmlDocGetRootElement(pParser->myDoc);
    return std::unique_ptr<xmlDoc, XmlTree::Free>(bGood ? std::exchange(pParser->myDoc, nullptr) : nullptr);
}

}  // namespace

std::shared_ptr<XmlTree> ReadXml(CString bytes, XmlFault& fault) {
    fault = {0, "the document can't be read"};
    const std::optional<CString> text = DecodeXml(std::move(bytes));
    if (!text) {
        fault.strWhat = "the text isn't in its encoding, or in one that isn't known";
        return nullptr;
    }
    if (const char* const pszExcess = FindXmlExcess(*text)) {
        fault.strWhat = pszExcess;
        return nullptr;
    }
    auto pTree = std::make_shared<XmlTree>();
    pTree->pDocument = Parse(*text, fault);
    if (!pTree->pDocument) {
        return nullptr;
    }
    fault = {};
    pTree->strDeclaration = WithoutEncoding(XmlDeclarationOf(*text));
    pTree->strLineEnd = LineEndOf(*text);
    xmlNode& root = *xmlDocGetRootElement(pTree->pDocument.get());
    pTree->bLaysOutRoot = xmlNodeGetSpacePreserve(&root) != 1;
    if (pTree->bLaysOutRoot) {
        DropSpace(root);
    }
    return pTree;
}

}  // namespace veldan
