// The interface art shared by every screen: overlay pictures and the cursor.
#pragma once

void LoadInterfaceArt(void);
void FreeInterfaceArt(void);
void DrawCursor(void);
