#include "platform/window/Messages.h"

#include <algorithm>

namespace veldan {

namespace {

constexpr MessageName kNames[] = {
#define VELDAN_MESSAGE_NAME(name, number, signature) {name, #name},
    VELDAN_MESSAGES(VELDAN_MESSAGE_NAME)
#undef VELDAN_MESSAGE_NAME
};

static_assert(std::ranges::is_sorted(kNames, {}, &MessageName::number));

}  // namespace

std::span<const MessageName> AllMessages() {
    return kNames;
}

std::string_view NameOfMessage(UINT message) {
    const auto* found = std::ranges::lower_bound(kNames, message, {}, &MessageName::number);
    return found != std::end(kNames) && found->number == message ? found->name : std::string_view();
}

}  // namespace veldan
