#include "storage/XmlWriter.h"

#include "storage/XmlEngine.h"
#include "storage/XmlText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veldan {

namespace {

/// What stands for each character that can't be written as it is, by its code; null for the others.
using Escapes = std::array<const char*, 128>;

/// The escapes of a document whose lines end in a certain way. The tree has line feeds.
struct Style {
    Escapes inText = {};
    Escapes inValues = {};
    Escapes inMarkup = {};
};

constexpr Style MakeStyle(const char* pszLineEnd) {
    Style style;
    style.inMarkup['\n'] = pszLineEnd;
    style.inText = style.inMarkup;
    style.inText['&'] = "&amp;";
    style.inText['<'] = "&lt;";
    style.inText['>'] = "&gt;";
    style.inText['\r'] = "&#13;";
    style.inValues = style.inText;
    style.inValues['"'] = "&quot;";
    style.inValues['\n'] = "&#10;";
    style.inValues['\t'] = "&#9;";
    return style;
}

constexpr Style kStyles[] = {MakeStyle("\r\n"), MakeStyle("\n")};

class Writer {
public:
    explicit Writer(const XmlTree& tree)
        : m_lineEnd(tree.strLineEnd),
          m_style(kStyles[tree.strLineEnd == "\n" ? 1 : 0]),
          m_pRoot(tree.bLaysOutRoot ? xmlDocGetRootElement(tree.pDocument.get()) : nullptr) {}

    CString Write(const XmlTree& tree) {
        if (!tree.strDeclaration.empty()) {
            Add(tree.strDeclaration);
            Add(m_lineEnd);
        }
        for (const xmlNode* pNode = tree.pDocument->children; pNode; pNode = pNode->next) {
            AddNode(*pNode);
            Add(m_lineEnd);
        }
        return std::move(m_strBytes);
    }

private:
    void AddNode(const xmlNode& node) {
        switch (node.type) {
            case XML_ELEMENT_NODE:
                AddElement(node);
                break;
            case XML_TEXT_NODE:
                AddText(node);
                break;
            case XML_CDATA_SECTION_NODE:
                AddSection(node);
                break;
            case XML_COMMENT_NODE:
                AddBetween("<!--", node, "-->");
                break;
            case XML_PI_NODE:
                Add("<?");
                Add(ViewOf(node.name));
                AddBetween(node.content ? " " : "", node, "?>");
                break;
            default:
                break;
        }
    }

    void AddElement(const xmlNode& element) {
        Add("<");
        AddName(element.ns, element.name);
        for (const xmlNs* pNs = element.nsDef; pNs; pNs = pNs->next) {
            Add(pNs->prefix ? " xmlns:" : " xmlns");
            Add(ViewOf(pNs->prefix));
            Add("=\"");
            AddEscaped(ViewOf(pNs->href), m_style.inValues);
            Add("\"");
        }
        for (const xmlAttr* pAttribute = element.properties; pAttribute; pAttribute = pAttribute->next) {
            Add(" ");
            AddName(pAttribute->ns, pAttribute->name);
            Add("=\"");
            for (const xmlNode* pText = pAttribute->children; pText; pText = pText->next) {
                AddEscaped(ViewOf(pText->content), m_style.inValues);
            }
            Add("\"");
        }
        if (!element.children) {
            Add("/>");
            return;
        }
        Add(">");
        AddChildren(element);
        Add("</");
        AddName(element.ns, element.name);
        Add(">");
    }

    /// A child of the root stands on a line of its own where there is no text before it, so that readers of lines find
    /// it. That text may be the line end itself.
    void AddChildren(const xmlNode& element) {
        const bool bOwnLines = &element == m_pRoot;
        bool bAfterText = false;
        for (const xmlNode* pNode = element.children; pNode; pNode = pNode->next) {
            const bool bText = pNode->type == XML_TEXT_NODE;
            if (bOwnLines && !bText && !bAfterText) {
                Add(m_lineEnd);
                Add("    ");
            }
            AddNode(*pNode);
            bAfterText = bText;
        }
        if (bOwnLines && !bAfterText) {
            Add(m_lineEnd);
        }
    }

    void AddText(const xmlNode& text) {
        const std::string_view content = ViewOf(text.content);
        if (text._private && IsXmlSpace(content)) {
            Add(content);
        } else {
            AddEscaped(content, m_style.inText);
        }
    }

    /// The parser joins neighbouring sections, so that what ends one may stand in the middle; there it is split again.
    void AddSection(const xmlNode& section) {
        std::string_view content = ViewOf(section.content);
        Add("<![CDATA[");
        for (std::size_t at = 0; (at = content.find("]]>")) != std::string_view::npos;) {
            AddEscaped(content.substr(0, at + 2), m_style.inMarkup);
            Add("]]><![CDATA[");
            content.remove_prefix(at + 2);
        }
        AddEscaped(content, m_style.inMarkup);
        Add("]]>");
    }

    void AddBetween(std::string_view begin, const xmlNode& node, std::string_view end) {
        Add(begin);
        AddEscaped(ViewOf(node.content), m_style.inMarkup);
        Add(end);
    }

    void AddName(const xmlNs* pNs, const xmlChar* pName) {
        if (pNs && pNs->prefix) {
            Add(ViewOf(pNs->prefix));
            Add(":");
        }
        Add(ViewOf(pName));
    }

    void AddEscaped(std::string_view text, const Escapes& escapes) {
        const auto isEscaped = [&](char c) { return (c & 0x80) == 0 && escapes[static_cast<unsigned char>(c)]; };
        while (!text.empty()) {
            const auto* const pNext = std::ranges::find_if(text, isEscaped);
            const auto plain = static_cast<std::size_t>(pNext - text.begin());
            Add(text.substr(0, plain));
            if (plain == text.size()) {
                return;
            }
            Add(escapes[static_cast<unsigned char>(*pNext)]);
            text.remove_prefix(plain + 1);
        }
    }

    void Add(std::string_view text) { m_strBytes.append(text); }

    std::string_view m_lineEnd;
    const Style& m_style;
    const xmlNode* m_pRoot;  // null where nothing is to be laid out
    CString m_strBytes;
};

/// Any address serves: what counts is that the engine leaves the field empty.
constexpr char kAdded = 0;

}  // namespace

void MarkAdded(_xmlNode& node) {
    node._private = const_cast<char*>(&kAdded);
}

CString WriteXml(const XmlTree& tree) {
    return Writer(tree).Write(tree);
}

}  // namespace veldan
