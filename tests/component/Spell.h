#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"

namespace component {

// A value as one line that also tells its kind: 5 (32 bits), 5s (16 bits), 5.0, 'text', True, 2024-03-02,
// empty, null, missing, nothing, {KEY: value, …} in the writing order, [a, b], <class> for any other object.
std::string Spell(const platform::Variant& value);
// The arguments of a call: "(1, 'a')".
std::string Spell(std::span<const platform::Variant> arguments);
// The captions of title lines with their positions: "0 商品代码[全部]".
std::vector<std::string> SpellTitle(const platform::Ref<platform::Vector>& lines);

// A dictionary of these keys, in this order.
platform::Ref<platform::Dictionary> Keys(
    std::initializer_list<std::pair<std::string_view, platform::Variant>> entries);

// A recordset with these text fields and rows, standing on its first row.
platform::Ref<platform::Recordset> TextRows(std::initializer_list<std::string_view> fields,
                                            const std::vector<std::vector<platform::Variant>>& rows);

}  // namespace component
