#include "mrvsim/live/Canvas.h"

#include <fmt/format.h>
#include <png.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "mrvsim/live/Theme.h"
#include "simulator/scenario/Wording.h"

namespace simulator::live {

namespace {

constexpr int kBytesInPixel = 4;

std::runtime_error failure(const char* what) {
  return std::runtime_error(fmt::format("live: {}: {}", what, printable(SDL_GetError())));
}

/// The first of the fonts that is installed; Dear ImGui's own if none is.
ImFont* loadFont(const std::vector<std::string>& files, float size) {
  // Latin letters, and the signs that the panels use.
  static const ImWchar letters[] = {0x20, 0xFF, 0x2010, 0x2026, 0x2190, 0x2193, 0x2212, 0x2212, 0};
  ImFontAtlas& fonts = *ImGui::GetIO().Fonts;
  for (const std::string& file : files) {
    if (!std::filesystem::exists(file)) continue;
    ImFont* const font = fonts.AddFontFromFileTTF(file.c_str(), size, nullptr, letters);
    if (font != nullptr) return font;
  }
  return fonts.AddFontDefault();
}

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

}  // namespace

Canvas::Canvas(const char* title, int width, int height) {
  window_.reset(SDL_CreateWindow(title, SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, width,
                                 height, SDL_WINDOW_RESIZABLE));
  if (!window_) throw failure("the window cannot be opened");
  SDL_SetWindowMinimumSize(window_.get(), kLeastWidth, kLeastHeight);
  renderer_.reset(SDL_CreateRenderer(window_.get(), -1, 0));
  if (!renderer_) throw failure("the window cannot be drawn in");
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

void Canvas::loadFonts() {
  const std::string inter = "/usr/share/fonts/opentype/inter/Inter-";
  const std::string dejavu = "/usr/share/fonts/truetype/dejavu/DejaVuSans";
  plain_ = loadFont({inter + "Regular.otf", dejavu + ".ttf"}, 15);
  strong_ = loadFont({inter + "SemiBold.otf", dejavu + "-Bold.ttf"}, 15);
  large_ = loadFont({inter + "SemiBold.otf", dejavu + "-Bold.ttf"}, 22);
  unsigned char* pixels = nullptr;
  int width = 0;
  int height = 0;
  ImGui::GetIO().Fonts->GetTexDataAsRGBA32(&pixels, &width, &height);
  fontTexture_ = makeTexture(width, height);
  SDL_UpdateTexture(fontTexture_.get(), nullptr, pixels, width * kBytesInPixel);
  ImGui::GetIO().Fonts->SetTexID(fontTexture_.get());
}

Texture Canvas::makeTexture(int width, int height) {
  Texture texture(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGBA32,
                                    SDL_TEXTUREACCESS_STATIC, width, height),
                  SDL_DestroyTexture);
  if (!texture) throw failure("the window's pictures cannot be made");
  SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
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
    const ImDrawVert* const vertices = list.VtxBuffer.Data + command.VtxOffset;
    const int count = list.VtxBuffer.Size - static_cast<int>(command.VtxOffset);
    SDL_RenderGeometryRaw(
        renderer_.get(), static_cast<SDL_Texture*>(command.GetTexID()), &vertices->pos.x,
        sizeof(ImDrawVert), reinterpret_cast<const SDL_Color*>(&vertices->col), sizeof(ImDrawVert),
        &vertices->uv.x, sizeof(ImDrawVert), count, list.IdxBuffer.Data + command.IdxOffset,
        static_cast<int>(command.ElemCount), sizeof(ImDrawIdx));
  }
}

void Canvas::savePicture(const std::string& file) {
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
  if (png_image_write_to_file(&image, file.c_str(), 0, pixels.data(), 0, nullptr) != 0) return;
  throw std::runtime_error(
      fmt::format("{}: cannot be written: {}", printableFile(file), printable(image.message)));
}

}  // namespace simulator::live
