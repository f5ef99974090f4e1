// Workers of the operations on the dictionary.
#pragma once

#include "core/call.h"

#include <qbobj/dictionary.h>

namespace qbobj
{

int x_qbobj_getDictionary(Call &call, const char *code, xmlNodePtr *node);
int x_qbobj_getTranslatedString(Call &call, const char *code, const char *key, char **str);

} // namespace qbobj
