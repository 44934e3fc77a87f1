#pragma once

namespace velmora {

struct DesktopSection;
class SectionParts;

/// Lays out the section Desktop and Security of the Options page. `section` outlives it.
void fillDesktop(SectionParts& parts, DesktopSection& section);

}  // namespace velmora
