#pragma once

namespace velmora {

struct Program;

/// Asks for a file, fetches the selected message once more from its server and writes exactly what comes, whole or not
/// at all. Says so where that can't be done.
void SaveOriginal(Program& program);

/// Likewise with the attachment that is chosen in the preview, decoded. It is never opened.
void SaveAttachment(Program& program);

}  // namespace velmora
