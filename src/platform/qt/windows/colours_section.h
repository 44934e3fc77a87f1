#pragma once

namespace velmora {

struct OptionsPage;
class SectionParts;

/// Lays out the section Menu Colours of the Options page. `page` outlives it.
void fillColours(SectionParts& parts, OptionsPage& page);

}  // namespace velmora
