#pragma once

#include "platform/AttributeStore.h"
#include "platform/Geometry.h"

#include <optional>
#include <vector>

// A stored window frame, when there is one that can be used: present, of the right size
// and type, and plausible (a damaged frame counts as never stored).
std::optional<BRect> LasRam(AttributeStore& store, const char* namn);

// The welcome screen's frame at start: the stored one, or a 640 × 400 frame centred on
// `screen` (the main screen's inclusive rectangle), which is then stored at once.
BRect GetWindowSize(AttributeStore& store, BRect screen);

// A frame moved, its size kept, onto the nearest of `skarmar` (the screens' inclusive
// rectangles) when none of them shows enough of its top to take hold of it: a frame stored
// for a monitor that has since been unplugged. A frame on a screen is returned as it is.
BRect FlyttaPaSkarm(BRect ram, const std::vector<BRect>& skarmar);
