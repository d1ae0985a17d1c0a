// Off Windows there is no GDI: no bitmap is made unless a test installs its own maker.
#include "host/library/in_memory_library.h"

namespace kxhost {

PreviewBitmapMaker DefaultPreviewBitmapMaker() { return nullptr; }

}  // namespace kxhost
