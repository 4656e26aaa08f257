#include "profile/ProfileIdentity.h"

#include "profile/ProfileNodes.h"

namespace veldan {

ProfileIdentity ReadIdentity(const XmlNode& root) {
    ProfileIdentity identity;
    for (const IdentityElement& element : kIdentityElements) {
        ReadValueText(root, element.pszName, identity.*element.pValue);
    }
    return identity;
}

void WriteIdentity(const XmlNode& root, const ProfileIdentity& identity) {
    for (const IdentityElement& element : kIdentityElements) {
        WriteValueNode(root, element.pszName, identity.*element.pValue);
    }
    AppendBreak(root);
}

bool IsUserDefined(const ProfileIdentity& identity) {
    return identity.strIsSysProfile == "UserDefine";
}

}  // namespace veldan
