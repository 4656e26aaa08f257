#include "storage/XmlReader.h"
#include "storage/XmlWriter.h"

#include <cstdlib>

#include <libxml/tree.h>

static std::string Dump(const veldan::XmlTree& tree) {
    xmlChar* pText = nullptr;
    int length = 0;
    xmlDocDumpMemoryEnc(tree.pDocument.get(), &pText, &length, "UTF-8");
    std::string text(reinterpret_cast<char*>(pText), static_cast<std::size_t>(length));
    xmlFree(pText);
    return text;
}

/// What the reader accepts is written in a form that it accepts again and that gives an equal tree.
extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t count) {
    veldan::XmlFault fault;
    const auto pTree = veldan::ReadXml({bytes, count}, fault);
    const std::string written = pTree ? veldan::WriteXml(*pTree) : "";
    const auto pAgain = pTree ? veldan::ReadXml(written, fault) : nullptr;
    if (pTree && (!pAgain || Dump(*pTree) != Dump(*pAgain) || veldan::WriteXml(*pAgain) != written)) {
        std::abort();
    }
    return 0;
}
