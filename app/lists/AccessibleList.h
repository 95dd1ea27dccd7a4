#pragma once

#include "model/processes/DisplayContainer.h"

#include <vector>

namespace tidewell {

class ShowItemList;

// A `ShowItemList` for assistive technology: a list of items, each named by its label and byte
// count and described by what its application uses. Nothing is made of it before someone asks. Main
// thread.

/// To be called before the first list is shown; more often does no harm.
void makeListsAccessible();

/// Tells that another row has the focus mark.
void tellFocusedRow(ShowItemList& list);

/// Tells of rows that came, went or changed; `before` is what the list held.
void tellChangedRows(ShowItemList& list, const std::vector<DisplayContainer>& before);

} // namespace tidewell
