#include "Tree.h"

#include "platform/core/Path.h"
#include "storage/IniDocument.h"

namespace {

using veldan::CIniDocument;

std::string Entry(const CIniDocument& index, std::size_t number) {
    return index.Get("Order", std::to_string(number), "");
}

std::size_t Count(const CIniDocument& index) {
    return static_cast<std::size_t>(std::max(veldan::Atoi(index.Get("Order", "Num", "")), 0));
}

}  // namespace

std::optional<Tree> ReadTree(const std::string& base) {
    CIniDocument top;
    top.Load(base + "/Profiles/order.ini");
    if (Count(top) == 0) {
        return std::nullopt;
    }
    Tree tree;
    for (std::size_t i = 0; i < Count(top); ++i) {
        std::string name = Entry(top, i);
        name.erase(name.find_last_not_of('*') + 1);
        CIniDocument group;
        group.Load(base + "/Profiles/" + name + "/order.ini");
        tree.rows.push_back(Count(group));
        if (name != "Recent" && name != "UserDefine" && tree.fourthOfFirst.empty() && Count(group) > 3) {
            tree.fourthOfFirst = veldan::ToHostPath(base + "/Profiles/" + name + "/" + Entry(group, 3));
        }
        tree.profiles += Count(group);
    }
    return tree;
}
