#pragma once

// Qt's accessibility turned on or off, as a screen reader turns it on a desktop: on every
// platform, the offscreen one included, so that what the program tells it can be heard.
void SattTillganglighet(bool pa);
