#include "mrvsim/live/Canvas.h"

#include <SDL_opengl.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "mrvsim/live/Theme.h"

namespace simulator::live {

namespace {

constexpr int kBytesInPixel = 4;

/// The first of the fonts that is installed; Dear ImGui's own if none is.
ImFont* loadFont(const std::vector<std::string>& files, float size) {
  // Latin letters, and the signs that the panels use.
  static const ImWchar letters[] = {0x20, 0xFF, 0x2010, 0x2026, 0x2190, 0x2193, 0x2212, 0x2212, 0};
  ImFontAtlas& fonts = *ImGui::GetIO().Fonts;
  for (const std::string& file : files) {
    if (!std::filesystem::exists(file)) continue;
    // One pixel of the font for each of the window, so letters are sharp and need no scaling.
    ImFontConfig config;
    config.OversampleH = config.OversampleV = 1;
    config.PixelSnapH = true;
    ImFont* const font = fonts.AddFontFromFileTTF(file.c_str(), size, &config, letters);
    if (font != nullptr) return font;
  }
  return fonts.AddFontDefault();
}

/// Triangles of one command.
struct Triangles {
  SDL_Renderer* renderer;
  SDL_Texture* texture;
  const ImDrawVert* vertices;
  int count;

  void draw(const ImDrawIdx* begin, const ImDrawIdx* end, SDL_Texture* filledWith) const {
    if (begin == end) return;
    SDL_RenderGeometryRaw(renderer, filledWith, &vertices->pos.x, sizeof(ImDrawVert),
                          reinterpret_cast<const SDL_Color*>(&vertices->col), sizeof(ImDrawVert),
                          &vertices->uv.x, sizeof(ImDrawVert), count, begin,
                          static_cast<int>(end - begin), sizeof(ImDrawIdx));
  }

  /// The same for a renderer that draws with the processor, for which upright rectangles and plain
  /// areas are much less work than triangles of a texture.
  void drawQuickly(const ImDrawIdx* begin, const ImDrawIdx* end) const {
    const ImDrawIdx* waiting = begin;
    bool isPlain = true;
    const auto flush = [&](const ImDrawIdx* upTo) {
      draw(waiting, upTo, isPlain ? nullptr : texture);
      waiting = upTo;
    };
    for (const ImDrawIdx* at = begin; at < end;) {
      if (isRectangle(at, end)) {
        flush(at);
        drawRectangle(vertices[at[0]], vertices[at[2]]);
        waiting = at += kRectangle;
        continue;
      }
      const bool plain = isWhite(at[0]) && isWhite(at[1]) && isWhite(at[2]);
      if (plain != isPlain) flush(at);
      isPlain = plain;
      at += kTriangle;
    }
    flush(end);
  }

 private:
  static constexpr int kTriangle = 3;
  static constexpr int kRectangle = 6;

  /// Whether a corner has the texture's white place, which stands for no texture.
  bool isWhite(ImDrawIdx index) const {
    const ImVec2 white = ImGui::GetIO().Fonts->TexUvWhitePixel;
    return vertices[index].uv.x == white.x && vertices[index].uv.y == white.y;
  }

  /// Whether the next two triangles are an upright rectangle of one colour.
  bool isRectangle(const ImDrawIdx* at, const ImDrawIdx* end) const {
    if (end - at < kRectangle || at[3] != at[0] || at[4] != at[2]) return false;
    const ImDrawVert& a = vertices[at[0]];
    const ImDrawVert& b = vertices[at[1]];
    const ImDrawVert& c = vertices[at[2]];
    const ImDrawVert& d = vertices[at[5]];
    const bool isUpright = a.pos.y == b.pos.y && b.pos.x == c.pos.x && c.pos.y == d.pos.y &&
                           d.pos.x == a.pos.x && a.uv.y == b.uv.y && b.uv.x == c.uv.x;
    return isUpright && a.col == b.col && b.col == c.col && c.col == d.col;
  }

  void drawRectangle(const ImDrawVert& from, const ImDrawVert& to) const {
    const SDL_FRect place = {from.pos.x, from.pos.y, to.pos.x - from.pos.x, to.pos.y - from.pos.y};
    SDL_Color colour;
    std::memcpy(&colour, &from.col, sizeof colour);
    if (from.uv.x == to.uv.x) {
      const bool isOpaque = colour.a == 255;
      SDL_SetRenderDrawBlendMode(renderer, isOpaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
      SDL_SetRenderDrawColor(renderer, colour.r, colour.g, colour.b, colour.a);
      SDL_RenderFillRectF(renderer, &place);
      return;
    }
    int width = 0;
    int height = 0;
    SDL_QueryTexture(texture, nullptr, nullptr, &width, &height);
    const auto pixels = [](float share, int size) {
      return static_cast<int>(std::lround(share * static_cast<float>(size)));
    };
    const int left = pixels(from.uv.x, width);
    const int top = pixels(from.uv.y, height);
    const SDL_Rect part = {left, top, pixels(to.uv.x, width) - left, pixels(to.uv.y, height) - top};
    SDL_SetTextureColorMod(texture, colour.r, colour.g, colour.b);
    SDL_SetTextureAlphaMod(texture, colour.a);
    SDL_RenderCopyF(renderer, texture, &part, &place);
    SDL_SetTextureColorMod(texture, 255, 255, 255);
    SDL_SetTextureAlphaMod(texture, 255);
  }
};

int buttonOf(const SDL_MouseButtonEvent& event) {
  return event.button == SDL_BUTTON_LEFT ? 0 : event.button == SDL_BUTTON_RIGHT ? 1 : 2;
}

/// The keys that text fields and sliders use.
void mapKeys(ImGuiIO& io) {
  io.KeyMap[ImGuiKey_Tab] = SDL_SCANCODE_TAB;
  io.KeyMap[ImGuiKey_LeftArrow] = SDL_SCANCODE_LEFT;
  io.KeyMap[ImGuiKey_RightArrow] = SDL_SCANCODE_RIGHT;
  io.KeyMap[ImGuiKey_Home] = SDL_SCANCODE_HOME;
  io.KeyMap[ImGuiKey_End] = SDL_SCANCODE_END;
  io.KeyMap[ImGuiKey_Delete] = SDL_SCANCODE_DELETE;
  io.KeyMap[ImGuiKey_Backspace] = SDL_SCANCODE_BACKSPACE;
  io.KeyMap[ImGuiKey_Enter] = SDL_SCANCODE_RETURN;
  io.KeyMap[ImGuiKey_Escape] = SDL_SCANCODE_ESCAPE;
}

/// Whether OpenGL, which the renderer uses, runs on the processor: Mesa's drivers without a
/// graphics card are called so.
bool isOpenGlWithoutCard(const SDL_RendererInfo& info) {
  if (std::string_view(info.name).find("opengl") == std::string_view::npos) return false;
  using GetString = const GLubyte*(APIENTRY*)(GLenum);
  const auto getString = reinterpret_cast<GetString>(SDL_GL_GetProcAddress("glGetString"));
  const GLubyte* const text = getString == nullptr ? nullptr : getString(GL_RENDERER);
  const std::string_view name = text == nullptr ? "" : reinterpret_cast<const char*>(text);
  return name.find("llvmpipe") != std::string_view::npos ||
         name.find("softpipe") != std::string_view::npos;
}

}  // namespace

Canvas::Canvas(const char* title, int width, int height) {
  window_.reset(SDL_CreateWindow(title, SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, width,
                                 height, SDL_WINDOW_RESIZABLE));
  if (!window_) throw std::runtime_error("live: the window cannot be opened");
  SDL_SetWindowMinimumSize(window_.get(), kLeastWidth, kLeastHeight);
  SDL_RendererInfo info = createRenderer(0);
  // SDL's own drawing takes a fifth of the time that OpenGL takes without a graphics card.
  if (isOpenGlWithoutCard(info)) info = createRenderer(SDL_RENDERER_SOFTWARE);
  isSoftware_ = (info.flags & SDL_RENDERER_SOFTWARE) != 0;
  ImGui::CreateContext();
  ImGuiIO& io = ImGui::GetIO();
  io.IniFilename = nullptr;
  io.LogFilename = nullptr;
  io.BackendFlags |= ImGuiBackendFlags_RendererHasVtxOffset;
  mapKeys(io);
  applyTheme();
  loadFonts();
}

Canvas::~Canvas() { ImGui::DestroyContext(); }

SDL_RendererInfo Canvas::createRenderer(std::uint32_t flags) {
  renderer_.reset();
  renderer_.reset(SDL_CreateRenderer(window_.get(), -1, flags));
  SDL_RendererInfo info = {};
  if (!renderer_ || SDL_GetRendererInfo(renderer_.get(), &info) != 0) {
    throw std::runtime_error("live: the window cannot be drawn in");
  }
  return info;
}

void Canvas::loadFonts() {
  const std::string inter = "/usr/share/fonts/opentype/inter/Inter-";
  const std::string dejavu = "/usr/share/fonts/truetype/dejavu/DejaVuSans";
  plain_ = loadFont({inter + "Regular.otf", dejavu + ".ttf"}, 15);
  strong_ = loadFont({inter + "SemiBold.otf", dejavu + "-Bold.ttf"}, 15);
  large_ = loadFont({inter + "SemiBold.otf", dejavu + "-Bold.ttf"}, 22);
  fixed_ = loadFont({dejavu + "Mono.ttf"}, 12);
  unsigned char* pixels = nullptr;
  int width = 0;
  int height = 0;
  ImGui::GetIO().Fonts->GetTexDataAsRGBA32(&pixels, &width, &height);
  fontTexture_ = makeTexture(width, height, false);
  SDL_UpdateTexture(fontTexture_.get(), nullptr, pixels, width * kBytesInPixel);
  ImGui::GetIO().Fonts->SetTexID(fontTexture_.get());
}

Texture Canvas::makeTexture(int width, int height, bool isOpaque) {
  Texture texture(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGBA32,
                                    SDL_TEXTUREACCESS_STATIC, width, height),
                  SDL_DestroyTexture);
  if (!texture) throw std::runtime_error("live: the window's pictures cannot be made");
  SDL_SetTextureBlendMode(texture.get(), isOpaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
  SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
  return texture;
}

ImVec2 Canvas::size() const {
  int width = 0;
  int height = 0;
  SDL_GetWindowSize(window_.get(), &width, &height);
  return {static_cast<float>(width), static_cast<float>(height)};
}

void Canvas::take(const SDL_Event& event) {
  ImGuiIO& io = ImGui::GetIO();
  switch (event.type) {
    case SDL_MOUSEMOTION:
      io.MousePos = {static_cast<float>(event.motion.x), static_cast<float>(event.motion.y)};
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
      const auto button = static_cast<std::size_t>(buttonOf(event.button));
      io.MousePos = {static_cast<float>(event.button.x), static_cast<float>(event.button.y)};
      isPressed_[button] = event.type == SDL_MOUSEBUTTONDOWN;
      wasPressed_[button] = wasPressed_[button] || isPressed_[button];
      break;
    }
    case SDL_MOUSEWHEEL:
      io.MouseWheel += static_cast<float>(event.wheel.y);
      break;
    case SDL_TEXTINPUT:
      io.AddInputCharactersUTF8(event.text.text);
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      io.KeysDown[event.key.keysym.scancode] = event.type == SDL_KEYDOWN;
      io.KeyCtrl = (event.key.keysym.mod & KMOD_CTRL) != 0;
      io.KeyShift = (event.key.keysym.mod & KMOD_SHIFT) != 0;
      io.KeyAlt = (event.key.keysym.mod & KMOD_ALT) != 0;
      break;
    default:
      break;
  }
}

void Canvas::begin(double seconds) {
  ImGuiIO& io = ImGui::GetIO();
  io.DisplaySize = size();
  io.DeltaTime = static_cast<float>(seconds);
  for (std::size_t i = 0; i < isPressed_.size(); ++i) {
    io.MouseDown[i] = isPressed_[i] || wasPressed_[i];
  }
  wasPressed_ = {};
  ImGui::NewFrame();
}

void Canvas::end() {
  ImGui::Render();
  const Colour background = kBackground;
  SDL_SetRenderDrawColor(renderer_.get(), background.red, background.green, background.blue, 255);
  SDL_RenderClear(renderer_.get());
  const ImDrawData& data = *ImGui::GetDrawData();
  for (int i = 0; i < data.CmdListsCount; ++i) draw(*data.CmdLists[i]);
  SDL_RenderSetClipRect(renderer_.get(), nullptr);
  SDL_RenderPresent(renderer_.get());
}

void Canvas::draw(const ImDrawList& list) {
  for (const ImDrawCmd& command : list.CmdBuffer) {
    const ImVec4& clip = command.ClipRect;
    const SDL_Rect rect = {static_cast<int>(clip.x), static_cast<int>(clip.y),
                           static_cast<int>(clip.z - clip.x), static_cast<int>(clip.w - clip.y)};
    if (rect.w <= 0 || rect.h <= 0) continue;
    SDL_RenderSetClipRect(renderer_.get(), &rect);
    draw(list, command);
  }
}

void Canvas::draw(const ImDrawList& list, const ImDrawCmd& command) {
  auto* const texture = static_cast<SDL_Texture*>(command.GetTexID());
  const ImDrawIdx* const begin = list.IdxBuffer.Data + command.IdxOffset;
  Triangles triangles = {renderer_.get(), texture, list.VtxBuffer.Data + command.VtxOffset,
                         list.VtxBuffer.Size - static_cast<int>(command.VtxOffset)};
  if (isSoftware_) {
    triangles.drawQuickly(begin, begin + command.ElemCount);
  } else {
    triangles.draw(begin, begin + command.ElemCount, texture);
  }
}

std::string Canvas::picture() const {
  int width = 0;
  int height = 0;
  SDL_GetRendererOutputSize(renderer_.get(), &width, &height);
  constexpr int kBytes = 3;
  std::vector<unsigned char> pixels(static_cast<std::size_t>(width * height * kBytes));
  SDL_RenderReadPixels(renderer_.get(), nullptr, SDL_PIXELFORMAT_RGB24, pixels.data(),
                       width * kBytes);
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  image.format = PNG_FORMAT_RGB;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::string bytes(size, '\0');
  if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0) {
    throw std::runtime_error("live: the window's picture cannot be written");
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace simulator::live
