#include "profile/ProfileBlock.h"

namespace veldan {

namespace {

void WriteOrKeep(const XmlNode& root, const char* name, const ProfileChoice* pChoice) {
    if (pChoice || root.GetChild(name, false)->IsEmpty()) {
        WriteChoiceNode(root, name, pChoice ? *pChoice : ProfileChoice());
    } else {
        AppendBreak(root);
    }
}

}  // namespace

KeptParameters ReadParameters(const XmlNode& root) {
    KeptParameters kept;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const ProfileParameter& parameter = ParameterAt(i);
        kept[i] = {ReadChoice(root, parameter.pszCurrent), ReadChoice(root, parameter.pszList)};
    }
    return kept;
}

void WriteBlock(const XmlNode& root, const ParameterBlock& block, const StreamFlags& disabled) {
    for (std::size_t i = 0; i < block.size(); ++i) {
        WriteOrKeep(root, ParameterAt(i).pszCurrent, block[i] ? &block[i]->current : nullptr);
    }
    for (std::size_t i = 0; i < block.size(); ++i) {
        const std::size_t stream = StreamOfParameter(i);
        if (&ParameterAt(i) == &kProfileStreams[stream].parameters.front()) {
            const char* const pszDisabled = disabled[stream] ? "YES" : "NO";
            WriteTextNode(root, kProfileStreams[stream].pszDisableList, pszDisabled);
            WriteTextNode(root, kProfileStreams[stream].pszDisable, pszDisabled);
        }
        WriteOrKeep(root, ParameterAt(i).pszList, block[i] ? &block[i]->list : nullptr);
    }
}

void WriteTextBlock(const XmlNode& root, std::span<const CString, kProfileParameters> texts) {
    ParameterBlock block;
    for (std::size_t i = 0; i < block.size(); ++i) {
        const ProfileChoice choice{texts[i], 0};
        block[i] = ParameterValues{choice, choice};
    }
    WriteBlock(root, block, {});
}

}  // namespace veldan
