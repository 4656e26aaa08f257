// Changes profiles as the editor does:  profile-rewriter FROM TO
//
// Every file of one folder is loaded, its combos are filled, each with a selection gets the next entry selected, and
// the file is saved under its name in the other folder. Prints a line a file, its fields apart by a character that XML
// never has: the name, whether it was saved, and the caption and the comment that the menu finds in the saved one.

#include "platform/core/File.h"
#include "profile/ListCombo.h"
#include "profile/ProfileBlock.h"
#include "profile/ProfileText.h"
#include "storage/XmlDocument.h"

#include <cstdio>
#include <filesystem>

using namespace veldan;
using testing::ListCombo;

namespace {

bool Rewrite(const CString& from, const CString& to) {
    XmlDocument document;
    if (!document.Load(from)) {
        return false;
    }
    const XmlNode root = document.GetRootElement();
    StreamFlags disabled = {};
    for (std::size_t i = 0; i < disabled.size(); ++i) {
        ListCombo combo;
        FillComboFromNode(root, kProfileStreams[i].pszDisableList, combo);
        disabled[i] = ReadDisableIndex(root, kProfileStreams[i].pszDisable, combo) != 0;
    }
    std::array<ListCombo, kProfileParameters> combos;
    std::array<const ListCombo*, kProfileParameters> pointers = {};
    for (std::size_t i = 0; i < combos.size(); ++i) {
        pointers[i] = &combos[i];
        if (!disabled[StreamOfParameter(i)]) {
            FillComboFromNode(root, ParameterAt(i).pszList, combos[i]);
        }
        if (combos[i].GetCurSel() >= 0) {
            combos[i].SelectEntry((combos[i].GetCurSel() + 1) % combos[i].GetCount());
        }
    }
    WriteComboBlock<ListCombo>(root, pointers, disabled, nullptr);
    return document.Save(to.c_str());
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        return 2;
    }
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        const CString strName = entry.path().filename();
        const CString to = CString(arguments[2]) + "/" + strName;
        const bool isSaved = Rewrite(entry.path(), to);
        CString bytes;
        const ProfileText text = isSaved && ReadWholeFile(to, bytes, 1 << 24) ? ReadProfileText(bytes) : ProfileText();
        std::printf("%s\1%d\1%s\1%s\n", strName.c_str(), isSaved ? 1 : 0, text.name.value_or("").c_str(),
                    text.comment.value_or("").c_str());
    }
    return 0;
}
