#pragma once

#include <string_view>
#include <vector>

namespace asntree {

/* Names that headers of C and of the run-time layer have in a program before any module: types,
   functions and constants. Nothing in generated headers may be called so. */
std::vector<std::string_view> reservedNames();
/* Members and parameters in these headers and in generated ones. Only a define may not be called
   so, since it would change what stands behind it. */
std::vector<std::string_view> reservedMembers();

} // namespace asntree
