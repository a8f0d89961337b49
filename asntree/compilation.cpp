#include "asntree/compilation.h"

#include "asntree/objects.h"
#include "asntree/values.h"

namespace asntree {

Compilation::Compilation() = default;
Compilation::~Compilation() = default;

} // namespace asntree
