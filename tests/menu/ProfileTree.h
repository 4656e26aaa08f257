#pragma once

#include "platform/draw/Png.h"
#include "platform/draw/Surface.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <vector>

namespace veldan {

/// The two lines of one entry in a group's index.
struct TreeEntry {
    CString strXml;
    CString strPng;
};

/// A base folder with a catalogue that a test makes piece by piece.
class ProfileTree {
public:
    [[nodiscard]] CString Base() const { return m_folder.Path(); }
    [[nodiscard]] const testing::TempFolder& Folder() const { return m_folder; }

    /// An icon of one colour.
    [[nodiscard]] static CString Icon(COLORREF colour, int side = 35) {
        Surface picture(side, side);
        const std::uint32_t pixel = 0xff000000 | (colour & 0xff) << 16 | (colour & 0xff00) | colour >> 16;
        std::fill_n(picture.Row(0), side * side, pixel);
        return EncodePng(picture, PngAlpha::Keep);
    }

    [[nodiscard]] static CString Profile(std::string_view name, std::string_view comment) {
        const CString text =
            "<?xml version=\"1.0\"?>\r\n<Profile>\r\n  <ProfileName value=\"NAME\"/>\r\n"
            "  <ProfileComment value=\"COMMENT\"/>\r\n</Profile>\r\n";
        return ReplaceAll(ReplaceAll(text, "COMMENT", comment), "NAME", name);
    }

    [[nodiscard]] static CString Index(const std::vector<TreeEntry>& entries) {
        CString text = "\xef\xbb\xbf[Order]\r\n" + Format("Num=%zu\r\n", entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const auto& [strXml, strPng] = entries[i];
            text += Format("%zu=", i) + strXml + "\r\n" + strXml + "=" + strPng + "\r\n";
        }
        return text;
    }

    /// Writes the index of groups, and an icon for each; a name may end in a star.
    void Groups(const std::vector<CString>& names) const {
        CString text = Format("[Order]\r\nNum=%zu\r\n", names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            text += Format("%zu=", i) + names[i] + "\r\n";
        }
        Write("order.ini", text);
        for (const CString& strName : names) {
            Write("Picture/" + strName.substr(0, strName.find('*')) + ".png", Icon(RGB(0, 200, 0), 16));
        }
    }

    /// Writes a group's folder with `count` profiles, whose file names begin with `strStem`.
    void Fill(const CString& strGroup, int count, const CString& strStem = "p") const {
        std::vector<TreeEntry> entries;
        for (int i = 0; i < count; ++i) {
            const CString strFile = strStem + Format("%d", i);
            entries.push_back({strFile + ".xml", strFile + ".png"});
            Write(strGroup + "/" + strFile + ".xml", Profile("Name " + strFile, "Comment " + strFile));
            Write(strGroup + "/" + strFile + ".png", Icon(RGB(0, 0, 200)));
        }
        Write(strGroup + "/order.ini", Index(entries));
    }

    /// Paths are relative to `Profiles`.
    CString Write(const CString& strName, std::string_view bytes) const {
        return m_folder.Write("Profiles/" + strName, bytes);
    }
    [[nodiscard]] CString Read(const CString& strName) const { return m_folder.Read("Profiles/" + strName); }
    [[nodiscard]] std::set<CString> Names(const CString& strName) const {
        return m_folder.Names("Profiles/" + strName);
    }

private:
    testing::TempFolder m_folder;
};

}  // namespace veldan
