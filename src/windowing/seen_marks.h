#pragma once

// Check boxes and radio buttons that can be seen on a dark ground. The toolkit's own style draws their edge darker than
// the ground, which leaves dark on dark; a desktop's style is left alone. Interface thread only, once, before windows.

void edgeMarksInTheDark();
