#pragma once

#include "platform/draw/DC.h"
#include "platform/draw/Png.h"
#include "platform/draw/Surface.h"
#include "support/TempFolder.h"

#include <vector>

namespace veldan {

/// One line pair of a group's index.
struct TreeEntry {
    CString strXml;
    CString strPng;
};

/// A base folder with profiles, made piece by piece.
class ProfileTree {
public:
    [[nodiscard]] CString Base() const { return m_folder.Path(); }
    [[nodiscard]] const testing::TempFolder& Folder() const { return m_folder; }

    /// An icon of one colour.
    [[nodiscard]] static CString Icon(COLORREF colour, int side = 35) {
        CBitmap bitmap;
        bitmap.CreateCompatibleBitmap(nullptr, side, side);
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        dc.SelectObject(&bitmap);
        dc.FillSolidRect({0, 0, side, side}, colour);
        return EncodePng(*bitmap.GetSurface(), PngAlpha::Keep);
    }

    [[nodiscard]] static CString Profile(std::string_view name, std::string_view comment) {
        return CString("<?xml version=\"1.0\"?>\r\n<Profile>\r\n  <ProfileName value=\"")
            .append(name)
            .append("\"/>\r\n  <ProfileComment value=\"")
            .append(comment)
            .append("\"/>\r\n</Profile>\r\n");
    }

    [[nodiscard]] static CString Index(const std::vector<TreeEntry>& entries) {
        CString text = "\xef\xbb\xbf[Order]\r\n" + Format("Num=%zu\r\n", entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            text +=
                Format("%zu=", i) + entries[i].strXml + "\r\n" + entries[i].strXml + "=" + entries[i].strPng + "\r\n";
        }
        return text;
    }

    /// Writes the top index; a name may be marked.
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

    /// Writes a group's folder with so many profiles, their files called after `stem`.
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

    /// A path is one below `Profiles`.
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
