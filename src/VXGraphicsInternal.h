// VXGraphicsInternal: what the renderer's files share among themselves (not
// part of the engine's interface).
#pragma once

#include <GL/glew.h>

// The program table: slot 0 none, 1 colour, 2 texture.
extern GLuint gVXGfxPrograms[3];
extern int gVXGfxCurrentProgram;

// Reads OpenGL's error queue; prints a report per error and halts on any.
void VXGfxCheckError(int line, const char* func);
#define VX_GFX_CHECK(func) VXGfxCheckError(__LINE__, func)
// Prints the halt report's message and ends the program with status 1 (after
// a key press when a person is at the terminal).
[[noreturn]] void VXGfxHalt(int line, const char* func, const char* message);
// The current program's uniform and attribute locations by name (-1 with no
// program or no such name).
GLint VXGfxUniform(const char* name);
GLint VXGfxAttribute(const char* name);
// Uploads a row-major 4 x 4 matrix to a uniform of the current program.
void VXGfxUploadMatrix(const char* name, const float m[4][4]);
// Uploads the camera's view matrix scaled by (sx, sy) (text printing uses a
// third of the full-screen scale to make up for its larger viewport).
void VXGfxUploadView(float sx, float sy);
// The seam: called once per finished frame before it is shown.
void VXSeamFrameFinished(void);
// The draw log of the seam (each does nothing unless it is recording).
struct VXGfxTexture;
void VXSeamNoteFrameStart(void);
void VXSeamNoteTexture(const VXGfxTexture* texture);
void VXSeamNoteTransform(const float m[3][3]);
void VXSeamNoteTint(float r, float g, float b, float a);
void VXSeamNoteDraw(void);
