#pragma once

#include "storage/XmlNode.h"

#include <array>

namespace veldan {

/// What tells profiles apart, with the values of one that the user made.
struct ProfileIdentity {
    CString strGroupID = "9999";
    CString strGroupName = "UserDefine";
    CString strProfileID = "9999";
    CString strProfileName;
    CString strProfileComment;
    CString strFormatExt;
    CString strIsSysProfile = "UserDefine";
};

struct IdentityElement {
    const char* pszName;
    CString ProfileIdentity::*pValue;
};

/// In the order of the file.
inline constexpr std::array<IdentityElement, 7> kIdentityElements = {{
    {"GroupID", &ProfileIdentity::strGroupID},
    {"GroupName", &ProfileIdentity::strGroupName},
    {"ProfileID", &ProfileIdentity::strProfileID},
    {"ProfileName", &ProfileIdentity::strProfileName},
    {"ProfileComment", &ProfileIdentity::strProfileComment},
    {"FormatExt", &ProfileIdentity::strFormatExt},
    {"IsSysProfile", &ProfileIdentity::strIsSysProfile},
}};

[[nodiscard]] ProfileIdentity ReadIdentity(const XmlNode& root);

/// Writes the elements that a new file begins with, and one break more behind them.
void WriteIdentity(const XmlNode& root, const ProfileIdentity& identity);

/// Whether the user made the profile: its parameters are plain texts. Any other one has lists to choose from.
[[nodiscard]] bool IsUserDefined(const ProfileIdentity& identity);

}  // namespace veldan
