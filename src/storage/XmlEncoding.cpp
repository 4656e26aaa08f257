#include "storage/XmlEncoding.h"

#include "storage/XmlText.h"

#include <algorithm>
#include <utility>

#include <iconv.h>

namespace veldan {

namespace {

constexpr std::string_view kUtf8 = "UTF-8";
constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

/// The encodings that a mark at the start tells, and those that the first character of a declaration does.
struct Start {
    std::string_view bytes;
    std::string_view encoding;
    bool bMark;
};

constexpr std::string_view Bytes(const char (&text)[3]) {
    return {text, 2};
}
constexpr std::string_view Bytes(const char (&text)[5]) {
    return {text, 4};
}

constexpr Start kStarts[] = {
    {kUtf8Mark, kUtf8, true},
    {Bytes("\xff\xfe"), "UTF-16LE", true},
    {Bytes("\xfe\xff"), "UTF-16BE", true},
    {Bytes("<\0?\0"), "UTF-16LE", false},
    {Bytes("\0<\0?"), "UTF-16BE", false},
};

/// Names that files bear for encodings with more characters than the name's own: text on the platform that profiles
/// come from is written by the larger one.
struct Alias {
    std::string_view name;
    std::string_view encoding;
};

constexpr Alias kAliases[] = {
    {"UTF8", kUtf8},     {"GB2312", "GB18030"}, {"GBK", "GB18030"},          {"SHIFT_JIS", "CP932"},
    {"X-SJIS", "CP932"}, {"EUC-KR", "CP949"},   {"KS_C_5601-1987", "CP949"},
};

CString ToUpper(std::string_view name) {
    CString upper(name);
    std::ranges::transform(upper, upper.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return upper;
}

/// Where the encoding stands in a declaration: from the white space before it on, and its name.
struct EncodingPlace {
    std::size_t nBegin = 0;
    std::size_t nEnd = 0;
    std::string_view name;
};

/// Walks through the parts of a declaration. What it doesn't understand is for the parser to refuse.
std::optional<EncodingPlace> FindEncoding(std::string_view declaration) {
    constexpr std::string_view kOpening = "<?xml";
    constexpr std::string_view kSpace = " \t\r\n";
    for (std::size_t begin = kOpening.size();;) {
        const std::size_t name = declaration.find_first_not_of(kSpace, begin);
        const std::size_t sign = declaration.find('=', begin);
        const std::size_t quote = sign == std::string_view::npos ? sign : declaration.find_first_of("\"'", sign);
        const std::size_t end =
            quote == std::string_view::npos ? quote : declaration.find(declaration[quote], quote + 1);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        if (TrimRight(declaration.substr(name, sign - name)) == "encoding") {
            return EncodingPlace{begin, end + 1, declaration.substr(quote + 1, end - quote - 1)};
        }
        begin = end + 1;
    }
}

/// A name that XML allows for an encoding. Others may mean something to the converter that they don't mean here.
bool IsEncodingName(std::string_view name) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    const auto isPart = [&](char c) {
        return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
    };
    return !name.empty() && name.size() < 40 && isLetter(name.front()) && std::ranges::all_of(name, isPart);
}

/// Whether a declaration may name this encoding in a file that begins as one of `encoding`.
bool Agrees(std::string_view declared, std::string_view encoding) {
    const CString upper = ToUpper(declared);
    if (encoding == kUtf8) {
        return upper == kUtf8 || upper == "UTF8";
    }
    return upper == encoding || upper == "UTF-16" || upper == "ISO-10646-UCS-2" || upper == "UCS-2";
}

std::optional<CString> Convert(std::string_view bytes, const CString& strEncoding) {
    const iconv_t converter = iconv_open(kUtf8.data(), strEncoding.c_str());
    // That is how the converter says that it knows no such encoding.
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        return std::nullopt;
    }
    CString text;
    text.reserve(std::min(3 * bytes.size(), static_cast<std::size_t>(kMostXmlBytes)));
    char* pIn = const_cast<char*>(bytes.data());
    std::size_t nIn = bytes.size();
    char chunk[16384];
    bool bGood = true;
    bool bFlushed = false;
    while (bGood && !bFlushed) {
        char* pOut = chunk;
        std::size_t nOut = sizeof chunk;
        bFlushed = nIn == 0;
        const std::size_t result = iconv(converter, bFlushed ? nullptr : &pIn, &nIn, &pOut, &nOut);
        // As long as something comes out a failure may only mean a full chunk; any other one comes back.
        bGood = (result != static_cast<std::size_t>(-1) || pOut != chunk) &&
                std::ssize(text) + (pOut - chunk) <= kMostXmlBytes;
        text.append(chunk, bGood ? pOut : chunk);
    }
    iconv_close(converter);
    return bGood ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<CString> DecodeAs(CString bytes, std::string_view encoding) {
    return encoding == kUtf8 ? std::optional(std::move(bytes)) : Convert(bytes, CString(encoding));
}

std::optional<CString> DecodeByStart(CString bytes, const Start& start) {
    if (start.bMark) {
        bytes.erase(0, start.bytes.size());
    }
    std::optional<CString> text = DecodeAs(std::move(bytes), start.encoding);
    const std::optional<EncodingPlace> place = text ? FindEncoding(XmlDeclarationOf(*text)) : std::nullopt;
    const bool bAgrees = place ? Agrees(place->name, start.encoding) : start.bMark;
    return bAgrees ? std::move(text) : std::nullopt;
}

std::optional<CString> DecodeByDeclaration(CString bytes) {
    const std::optional<EncodingPlace> place = FindEncoding(XmlDeclarationOf(bytes));
    const CString name = ToUpper(place ? place->name : kUtf8);
    if (!IsEncodingName(name)) {
        return std::nullopt;
    }
    const auto* const pAlias = std::ranges::find(kAliases, std::string_view(name), &Alias::name);
    return DecodeAs(std::move(bytes), pAlias == std::end(kAliases) ? name : pAlias->encoding);
}

}  // namespace

std::string_view XmlDeclarationOf(std::string_view text) {
    if (!text.starts_with("<?xml") || text.size() < 6 || !IsXmlSpace(text.substr(5, 1))) {
        return {};
    }
    const std::size_t end = text.find("?>");
    return end == std::string_view::npos ? std::string_view() : text.substr(0, end + 2);
}

CString WithoutEncoding(std::string_view declaration) {
    CString result(declaration);
    if (const std::optional<EncodingPlace> place = FindEncoding(declaration)) {
        result.erase(place->nBegin, place->nEnd - place->nBegin);
    }
    return result;
}

std::optional<CString> DecodeXml(CString bytes) {
    const auto* const pStart =
        std::ranges::find_if(kStarts, [&](const Start& start) { return bytes.starts_with(start.bytes); });
    std::optional<CString> text =
        pStart == std::end(kStarts) ? DecodeByDeclaration(std::move(bytes)) : DecodeByStart(std::move(bytes), *pStart);
    // The parser would skip a second mark.
    return text && !text->starts_with(kUtf8Mark) && IsXmlText(*text) ? std::move(text) : std::nullopt;
}

}  // namespace veldan
