#pragma once

#include "menu/ProfileTree.h"

#include <optional>

namespace veldan {

/// The entries of an index; nothing unless it is whole, byte for byte as the menu writes it.
[[nodiscard]] inline std::optional<std::vector<TreeEntry>> EntriesOf(const CString& index) {
    std::vector<CString> lines;
    for (std::size_t begin = 0, end = 0; (end = index.find("\r\n", begin)) != CString::npos; begin = end + 2) {
        lines.push_back(index.substr(begin, end - begin));
    }
    const auto valueOf = [&](std::size_t line) {
        const std::size_t sign = line < lines.size() ? lines[line].find('=') : CString::npos;
        return sign == CString::npos ? CString() : lines[line].substr(sign + 1);
    };
    std::vector<TreeEntry> entries;
    for (std::size_t line = 2; line + 1 < lines.size(); line += 2) {
        entries.push_back({valueOf(line), valueOf(line + 1)});
    }
    return ProfileTree::Index(entries) == index ? std::optional(entries) : std::nullopt;
}

/// A tree with the two groups that the menu rewrites. What a file holds follows from its name, so that a look at any
/// copy tells whether it is whole.
class ListedTree : public ProfileTree {
public:
    static constexpr const char* kSharedIcon = "large_DefaultN.png";

    explicit ListedTree(const std::vector<CString>& groups = {"Movies"}, int profiles = 12) {
        std::vector<CString> names = {"Recent", "UserDefine"};
        names.insert(names.begin(), groups.begin(), groups.end());
        Groups(names);
        for (const CString& strGroup : groups) {
            Fill(strGroup, profiles, strGroup == "Movies" ? "p" : strGroup + "-");
        }
        Write("Recent/order.ini", Index({}));
        Write("UserDefine/order.ini", Index({}));
        Write("UserDefine/large_Default.png", Content("x.png"));
    }

    /// What each file of this name holds, wherever it stands.
    [[nodiscard]] static CString Content(const CString& strName) {
        static const CString icon = Icon(RGB(0, 0, 200));
        const CString stem = strName.substr(0, strName.rfind('.'));
        return strName.ends_with(".png") ? icon : Profile("Name " + stem, "Comment " + stem);
    }

    [[nodiscard]] static TreeEntry EntryOf(const CString& strXml) {
        const bool isOwn = strXml.starts_with("u");
        return {strXml, isOwn ? CString(kSharedIcon) : strXml.substr(0, strXml.rfind('.')) + ".png"};
    }
    [[nodiscard]] static CString IndexOf(const std::vector<CString>& xmls) {
        std::vector<TreeEntry> entries;
        for (const CString& strXml : xmls) {
            entries.push_back(EntryOf(strXml));
        }
        return Index(entries);
    }

    /// Makes a group hold just these entries, with their files.
    void List(const CString& strGroup, const std::vector<CString>& xmls) const {
        for (const CString& strName : Names(strGroup)) {
            if (strName != "large_Default.png") {
                std::filesystem::remove(Folder() / ("Profiles/" + strGroup + "/" + strName));
            }
        }
        for (const CString& strXml : xmls) {
            const TreeEntry entry = EntryOf(strXml);
            Write(strGroup + "/" + entry.strXml, Content(entry.strXml));
            Write(strGroup + "/" + entry.strPng, Content(entry.strPng));
        }
        Write(strGroup + "/order.ini", IndexOf(xmls));
    }

    [[nodiscard]] bool Has(const CString& strName) const {
        return std::filesystem::exists(Folder() / ("Profiles/" + strName));
    }

    /// What is wrong with a group on the disk, the empty text if nothing is: the index must be whole, and every file
    /// that it names must be.
    [[nodiscard]] CString HarmIn(const CString& strGroup, bool withIcons = true) const {
        const CString index = Read(strGroup + "/order.ini");
        const std::optional<std::vector<TreeEntry>> entries = EntriesOf(index);
        if (!entries) {
            return "torn: " + index;
        }
        for (const auto& [strXml, strPng] : *entries) {
            for (const CString& strName : {strXml, withIcons ? strPng : strXml}) {
                if (!strName.empty() && Read(strGroup + "/" + strName) != Content(strName)) {
                    return strName + " isn't whole in " + strGroup;
                }
            }
        }
        return "";
    }

    /// How many files in the making stand in the two groups.
    [[nodiscard]] int Temporaries() const {
        int count = 0;
        for (const CString& strGroup : {CString("Recent"), CString("UserDefine")}) {
            for (const CString& strName : Names(strGroup)) {
                count += strName.starts_with(".") ? 1 : 0;
            }
        }
        return count;
    }
};

}  // namespace veldan
