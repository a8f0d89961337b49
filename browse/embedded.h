#pragma once

/* The files of browse/page/, which the build turns into texts. */

namespace browse {

/* "@TITLE@", "@STYLE@", "@DATA@" and "@SCRIPT@" stand where these belong. */
extern const char *const pageMarkup;
extern const char *const pageStyle;
extern const char *const pageScript;

} // namespace browse
