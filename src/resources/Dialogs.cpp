#include "resources/Dialogs.h"

#include "platform/dialog/DialogTemplate.h"
#include "platform/resource/Resource.h"
#include "resources/Icons.h"

namespace veldan {
namespace {

/// The menu sets its own size when it knows its groups.
constexpr DialogTemplate kDialogs[] = {
    {.id = kMenuDialogId, .size = {0, 0, 284, 201}, .caption = "veldan menu"},
};

const Resource kResources[] = {
    {kAddIconId, "PNG", kPng1057},
    {kNeutralRowIconId, "PNG", kPng1058},
    {kNeutralGroupIconId, "PNG", kPng1059},
};

const DialogTemplateTable g_dialogs(kDialogs);
const ResourceTable g_resources(kResources);

}  // namespace
}  // namespace veldan
