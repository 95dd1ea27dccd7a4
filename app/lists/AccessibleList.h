#pragma once

#include "model/processes/DisplayContainer.h"

#include <vector>

namespace tidewell {

class ShowItemList;

// A `ShowItemList` for assistive technology: a list of items, each named by its label and byte
// count. Nothing is made of it before someone asks. Main thread.

/// To be called before the first list is shown; more often does no harm.
void makeListsAccessible();

/// Tells of rows that came, went or changed; `before` is what the list held.
void tellChangedRows(ShowItemList& list, const std::vector<DisplayContainer>& before);

} // namespace tidewell
