// VXGraphics: the renderer core. Starts OpenGL 2.0 through GLEW on the
// platform's context, builds the two shader programs (vertex colour and
// texture), keeps the fixed 2-D camera and uploads the per-draw state.
//
// Every value a program reads is set on the program current at the time and
// looked up by name: the colour and texture programs keep their own values.
//
// Depends on: GLEW, OpenGL, VXPlatform (context, swap), VXSystem (scale).
// Limits: one context, on the game thread.
#include "VXGraphics.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "VXGraphicsInternal.h"
#include "VXMath4.h"
#include "VXPlatform.h"
#include "VXSystem.h"

float gVXWinMinX = 0.0f, gVXWinMaxX = 0.0f, gVXWinMinY = 0.0f, gVXWinMaxY = 0.0f;
GLuint gVXGfxPrograms[3] = {0, 0, 0};
int gVXGfxCurrentProgram = 0;

namespace {

const char* const kSourceFile = "..\\..\\src\\VXGraphics";

int sWidth = 0;
int sHeight = 0;
float sCamX = 0.0f;
float sCamY = 0.0f;
bool sContextLive = false;

// Each program's uniform and attribute locations, looked up by name the
// first time they are asked for. A location never changes while its program
// lives, and asking OpenGL by name on every set costs more than a draw.
struct LocationCache {
    char names[16][32];
    GLint locations[16];
    int count;
};
LocationCache sUniforms[3], sAttributes[3];

// Colour program: vertex colour, mixed with the blend colour, times the tint.
const char* const kColorVertex =
    "attribute vec4 aPosition;\n"
    "attribute vec4 aColor;\n"
    "uniform mat4 uPMatrix;\n"
    "uniform mat4 uVMatrix;\n"
    "uniform mat4 uWorldMatrix;\n"
    "varying vec4 vColor;\n"
    "void main()\n"
    "{\n"
    "    vColor = aColor;\n"
    "    gl_Position = uPMatrix * uVMatrix * uWorldMatrix * aPosition;\n"
    "}\n";
const char* const kColorFragment =
    "//precision mediump float;\n"
    "uniform vec4 uBlendColor;\n"
    "uniform float uTransparencyValue;\n"
    "uniform vec4 uTintColor;\n"
    "varying vec4 vColor;\n"
    "void main()\n"
    "{\n"
    "    gl_FragColor.x = (vColor.x * (1.0 - uBlendColor.w) + uBlendColor.x * uBlendColor.w) * "
    "uTintColor.x;\n"
    "    gl_FragColor.y = (vColor.y * (1.0 - uBlendColor.w) + uBlendColor.y * uBlendColor.w) * "
    "uTintColor.y;\n"
    "    gl_FragColor.z = (vColor.z * (1.0 - uBlendColor.w) + uBlendColor.z * uBlendColor.w) * "
    "uTintColor.z;\n"
    "    gl_FragColor.w = vColor.w * uTransparencyValue * uTintColor.w;\n"
    "}\n";

// Texture program: the texel at the scrolled coordinate, wrapped once above
// 1.0, mixed with the blend colour, times the tint.
const char* const kTextureVertex =
    "attribute vec4 aPosition;\n"
    "attribute vec2 aTextureCoordinate;\n"
    "uniform mat4 uPMatrix;\n"
    "uniform mat4 uVMatrix;\n"
    "uniform mat4 uWorldMatrix;\n"
    "varying vec2 vTextureCoordinate;\n"
    "void main()\n"
    "{\n"
    "    vTextureCoordinate = aTextureCoordinate;\n"
    "    gl_Position = uPMatrix * uVMatrix * uWorldMatrix * aPosition;\n"
    "}\n";
const char* const kTextureFragment =
    "//precision mediump float;\n"
    "uniform sampler2D uTexture;\n"
    "uniform vec4 uBlendColor;\n"
    "uniform vec2 uTextureOffset;\n"
    "uniform float uTransparencyValue;\n"
    "uniform vec4 uTintColor;\n"
    "varying vec2 vTextureCoordinate;\n"
    "void main()\n"
    "{\n"
    "    vec2 c = vTextureCoordinate + uTextureOffset;\n"
    "    if (c.x > 1.0) c.x -= 1.0;\n"
    "    if (c.y > 1.0) c.y -= 1.0;\n"
    "    vec4 s = texture2D(uTexture, c);\n"
    "    gl_FragColor.x = (s.x * (1.0 - uBlendColor.w) + uBlendColor.x * uBlendColor.w) * "
    "uTintColor.x;\n"
    "    gl_FragColor.y = (s.y * (1.0 - uBlendColor.w) + uBlendColor.y * uBlendColor.w) * "
    "uTintColor.y;\n"
    "    gl_FragColor.z = (s.z * (1.0 - uBlendColor.w) + uBlendColor.z * uBlendColor.w) * "
    "uTintColor.z;\n"
    "    gl_FragColor.w = s.w * (uTransparencyValue * uTintColor.w);\n"
    "}\n";

// Compiles one stage; a stage that fails to compile is left out silently.
void AttachShader(GLuint program, GLenum type, const char* text) {
    GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint ok = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
    if (ok == GL_TRUE)
        glAttachShader(program, shader);
    else
        glDeleteShader(shader);
}

GLuint CreateProgram(const char* vertex, const char* fragment) {
    GLuint program = glCreateProgram();
    AttachShader(program, GL_VERTEX_SHADER, vertex);
    AttachShader(program, GL_FRAGMENT_SHADER, fragment);
    glLinkProgram(program);
    return program;
}

// Deletes both programs and their shaders.
void ShaderDestroy(void) {
    for (int i = 0; i < 3; ++i) {
        if (!gVXGfxPrograms[i]) continue;
        GLuint shaders[3];
        GLsizei count = 0;
        glGetAttachedShaders(gVXGfxPrograms[i], 3, &count, shaders);
        for (GLsizei s = 0; s < count; ++s) glDeleteShader(shaders[s]);
        glDeleteProgram(gVXGfxPrograms[i]);
        gVXGfxPrograms[i] = 0;
        sUniforms[i].count = sAttributes[i].count = 0;
        VX_GFX_CHECK("Shader::Destroy");
    }
    gVXGfxCurrentProgram = 0;
}

void ComputeVisibleRect(void) {
    gVXWinMinX = sCamX - (float)sWidth / 2.0f;
    gVXWinMaxX = sCamX + (float)sWidth / 2.0f;
    gVXWinMinY = sCamY - (float)sHeight / 2.0f;
    gVXWinMaxY = sCamY + (float)sHeight / 2.0f;
}

// The scaled logical window: the drawable's size in full screen.
void ScaledWindow(int* w, int* h) {
    *w = (int)((float)sWidth * gVXWinScaleX);
    *h = (int)((float)sHeight * gVXWinScaleY);
}

// Orthographic projection over the scaled window, camera view, full viewport.
void SetProjectionAndViewMatrices(void) {
    int w, h;
    ScaledWindow(&w, &h);
    float projection[4][4] = {{2.0f / (float)w, 0, 0, 0},
                              {0, 2.0f / (float)h, 0, 0},
                              {0, 0, -2.0f / 999.0f, -1001.0f / 999.0f},
                              {0, 0, 0, 1}};
    VXGfxUploadMatrix("uPMatrix", projection);
    glViewport(0, 0, w, h);
    VX_GFX_CHECK("SetProjectionAndViewMatrices");
    VXGfxUploadView(gVXWinScaleX, gVXWinScaleY);
    VX_GFX_CHECK("SetProjectionAndViewMatrices");
}

void SetUniform4(const char* name, float a, float b, float c, float d) {
    GLint location = VXGfxUniform(name);
    if (location != -1) glUniform4f(location, a, b, c, d);
}

} // namespace

[[noreturn]] void VXGfxHalt(int line, const char* func, const char* message) {
    if (message)
        std::printf("HALT:\nLine: %d\nFunc: %s\nFile: %s\n%s\n", line, func, kSourceFile, message);
    std::fflush(stdout);
    // Wait for a key only when a person can press one.
    if (isatty(STDIN_FILENO)) (void)std::getchar();
    std::exit(1);
}

void VXGfxCheckError(int line, const char* func) {
    bool any = false;
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        any = true;
        std::printf("CHECK_GL_ERROR:\nLine: %d\nFunc: %s\nFile: %s\n", line, func, kSourceFile);
        std::printf("Code: 0x%.8x\n", (unsigned)error);
        std::printf("Mesg: \n");
    }
    if (any) VXGfxHalt(line, func, nullptr);
}

namespace {

GLint Lookup(LocationCache& cache, const char* name, GLint (*query)(GLuint, const GLchar*)) {
    for (int i = 0; i < cache.count; ++i)
        if (std::strcmp(cache.names[i], name) == 0) return cache.locations[i];
    GLint location = query(gVXGfxPrograms[gVXGfxCurrentProgram], name);
    if (cache.count < 16 && std::strlen(name) < sizeof cache.names[0]) {
        std::strcpy(cache.names[cache.count], name);
        cache.locations[cache.count++] = location;
    }
    return location;
}

GLint QueryUniform(GLuint program, const GLchar* name) {
    return glGetUniformLocation(program, name);
}
GLint QueryAttribute(GLuint program, const GLchar* name) {
    return glGetAttribLocation(program, name);
}

} // namespace

GLint VXGfxUniform(const char* name) {
    if (gVXGfxCurrentProgram == 0) return -1;
    return Lookup(sUniforms[gVXGfxCurrentProgram], name, QueryUniform);
}

GLint VXGfxAttribute(const char* name) {
    if (gVXGfxCurrentProgram == 0) return -1;
    return Lookup(sAttributes[gVXGfxCurrentProgram], name, QueryAttribute);
}

// OpenGL reads matrices column by column: transpose, never its transpose flag.
void VXGfxUploadMatrix(const char* name, const float m[4][4]) {
    GLint location = VXGfxUniform(name);
    if (location == -1) return;
    float columns[16];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) columns[c * 4 + r] = m[r][c];
    glUniformMatrix4fv(location, 1, GL_FALSE, columns);
}

// The camera looks down from z = 60 at the plane z = 0; then the scale.
void VXGfxUploadView(float sx, float sy) {
    Matrix4 lookAt = Matrix4LookAt(Point4(sCamX, sCamY, 60.0f, 1.0f),
                                   Point4(sCamX, sCamY, 0.0f, 1.0f), Vector4(0, 1, 0, 0));
    Matrix4 scale(sx, 0, 0, 0, 0, sy, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    Matrix4 view = scale * lookAt;
    VXGfxUploadMatrix("uVMatrix", view.m);
}

int VXGfxInit(int width, int height) {
    sWidth = width;
    sHeight = height;
    std::printf("Graphics: OpenGL\n");
    if (!VXPlatformWindowHandle()) return 0;
    if (!VXPlatformContextCreate()) return 0;
    sContextLive = true;

    glewExperimental = GL_TRUE;
    GLenum glew = glewInit();
    // GLEW built for GLX reports "no GLX display" on an EGL context although
    // every entry point is loaded; only a real failure to load them halts.
    if (glew != GLEW_OK && !(glew == 4 && glCreateProgram != nullptr))
        VXGfxHalt(__LINE__, "VXGfxInit", "Mesg: fail to initialize GLEW!!");
    glGetError(); // glewInit may leave an enum error behind on core-less contexts
    if (!GLEW_VERSION_2_0) VXGfxHalt(__LINE__, "VXGfxInit", "Mesg: OpenGL 2.0 is not supported!!");

    sCamX = sCamY = 0.0f;
    ComputeVisibleRect();
    gVXGfxPrograms[1] = CreateProgram(kColorVertex, kColorFragment);
    gVXGfxPrograms[2] = CreateProgram(kTextureVertex, kTextureFragment);
    gVXGfxCurrentProgram = 0;

    VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    VXGfxSetTintColor(1.0f, 1.0f, 1.0f, 1.0f);
    VXGfxSetTransparency(1.0f);
    glClearColor(1.0f, 1.0f, 1.0f, 1.0f);
    VX_GFX_CHECK("VXGfxInit");
    return 1;
}

void VXGfxExit(void) {
    if (!sContextLive) return;
    ShaderDestroy();
    VXGfxReset();
    VXPlatformContextDestroy();
    sContextLive = false;
}

void VXGfxStart(void) {
    VXSeamNoteFrameStart();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glViewport(0, 0, sWidth, sHeight);
}

void VXGfxEnd(void) {
    VX_GFX_CHECK("VXGfxEnd");
    VXGfxSetRenderMode(VX_GFX_RENDER_NONE);
    VX_GFX_CHECK("VXGfxEnd");
    // The frame's drawing is finished before the frame-rate controller's
    // wait begins: the wait then measures a frame whose picture is really
    // done, so the driver never queues frames ahead of the one on screen
    // (input stays one frame behind at most) and a slow frame shows up in
    // the frame time that paces the game, not in the next frame's.
    glFinish();
    VXSeamFrameFinished();
    VXPlatformSwap();
}

int VXGetWindowWidth(void) {
    return sWidth;
}
int VXGetWindowHeight(void) {
    return sHeight;
}

void VXGfxSetBackgroundColor(float r, float g, float b) {
    glClearColor(r, g, b, 1.0f);
}

float VXGfxGetWinMinX(void) {
    return gVXWinMinX;
}
float VXGfxGetWinMaxX(void) {
    return gVXWinMaxX;
}
float VXGfxGetWinMinY(void) {
    return gVXWinMinY;
}
float VXGfxGetWinMaxY(void) {
    return gVXWinMaxY;
}

void VXGfxSetCamPosition(float x, float y) {
    sCamX = x;
    sCamY = y;
    ComputeVisibleRect();
}

void VXGfxGetCamPosition(float* x, float* y) {
    if (x) *x = sCamX;
    if (y) *y = sCamY;
}

void VXGfxSetRenderMode(int mode) {
    if (mode < VX_GFX_RENDER_NONE || mode > VX_GFX_RENDER_TEXTURE) return;
    if (mode == gVXGfxCurrentProgram) return;
    gVXGfxCurrentProgram = mode;
    glUseProgram(gVXGfxPrograms[mode]);
    if (mode != VX_GFX_RENDER_NONE) SetProjectionAndViewMatrices();
}

int VXGfxGetRenderMode(void) {
    return gVXGfxCurrentProgram;
}

void VXGfxSetBlendMode(int mode) {
    switch (mode) {
    case VX_GFX_BLEND_NONE:
        glDisable(GL_BLEND);
        break;
    case VX_GFX_BLEND_ALPHA:
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        break;
    case VX_GFX_BLEND_ADDITIVE:
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
        break;
    default:
        break;
    }
}

void VXGfxSetTintColor(float r, float g, float b, float a) {
    VXSeamNoteTint(r, g, b, a);
    SetUniform4("uTintColor", r, g, b, a);
}

void VXGfxSetTransparency(float alpha) {
    GLint location = VXGfxUniform("uTransparencyValue");
    if (location != -1) glUniform1f(location, alpha);
}

void VXGfxSetBlendColor(float r, float g, float b, float a) {
    SetUniform4("uBlendColor", r, g, b, a);
    VX_GFX_CHECK("VXGfxSetBlendColor");
}

// The 2-D affine matrix as a 4 x 4 placement in the plane z = 0.
void VXGfxSetTransform(float m[3][3]) {
    VXSeamNoteTransform(m);
    float world[4][4] = {
        {m[0][0], m[0][1], 0, m[0][2]}, {m[1][0], m[1][1], 0, m[1][2]}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    VXGfxUploadMatrix("uWorldMatrix", world);
}

void VXGfxSetPosition(float x, float y) {
    float world[4][4] = {{1, 0, 0, x}, {0, 1, 0, y}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    VXGfxUploadMatrix("uWorldMatrix", world);
}

void VXGfxSetTransform3D(float m[4][4]) {
    VXGfxUploadMatrix("uWorldMatrix", m);
}
