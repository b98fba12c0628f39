// The shared interface art. The pictures come with the screens; until then
// there is nothing to load and no cursor sprite to draw.
#include "InterfaceArt.h"

void LoadInterfaceArt(void) {
}
void FreeInterfaceArt(void) {
}
void DrawCursor(void) {
}
