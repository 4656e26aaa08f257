#include "resources/Dialogs.h"

#include "platform/dialog/Dialog.h"
#include "platform/resource/Resource.h"
#include "resources/Png1057.h"

namespace veldan {
namespace {

/// The menu gives itself its size when it knows its groups.
constexpr DialogTemplate kMenuDialog = {WS_POPUP, {284, 201}, "veldan menu"};

const Resource kResources[] = {
    {kMenuDialogId, "DIALOG", std::as_bytes(std::span(&kMenuDialog, 1))},
    {kAddIconId, "PNG", kPng1057},
};

const ResourceTable g_resources(kResources);

}  // namespace
}  // namespace veldan
