#pragma once

// What the five rows show and call, from top to bottom.

#include "timeline/timeline_row_form.h"

#include <vector>

std::vector<RowParts> makeRowParts();
