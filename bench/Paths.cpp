// SPDX-License-Identifier: MIT
// Paths as text: beside the C runtime's checked split and compose, and std::filesystem::path.
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "Harness.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

template <class Char>
struct Runtime;
template <>
struct Runtime<char> {
  static constexpr const char* kForm = " (plain)";
  static constexpr unsigned kBase = 0;
  static void Split(const char* path, char* a, char* b, char* c, char* d) {
    ::_splitpath_s(path, a, _MAX_DRIVE, b, _MAX_DIR, c, _MAX_FNAME, d, _MAX_EXT);
  }
  static void Make(char* out, const char* a, const char* b, const char* c, const char* d) {
    ::_makepath_s(out, _MAX_PATH, a, b, c, d);
  }
  static void Copy(char* out, const char* text) { ::strcpy_s(out, _MAX_PATH, text); }
  static void Append(char* out, const char* text) { ::strcat_s(out, _MAX_FNAME, text); }
  static void Digits(char* out, unsigned index) { ::_sprintf_s_l(out, 16, "%.4i", nullptr, index); }
};
template <>
struct Runtime<wchar_t> {
  static constexpr const char* kForm = " (UTF-16)";
  static constexpr unsigned kBase = 1000;
  static void Split(const wchar_t* path, wchar_t* a, wchar_t* b, wchar_t* c, wchar_t* d) {
    ::_wsplitpath_s(path, a, _MAX_DRIVE, b, _MAX_DIR, c, _MAX_FNAME, d, _MAX_EXT);
  }
  static void Make(wchar_t* out, const wchar_t* a, const wchar_t* b, const wchar_t* c, const wchar_t* d) {
    ::_wmakepath_s(out, _MAX_PATH, a, b, c, d);
  }
  static void Copy(wchar_t* out, const wchar_t* text) { ::wcscpy_s(out, _MAX_PATH, text); }
  static void Append(wchar_t* out, const wchar_t* text) { ::wcscat_s(out, _MAX_FNAME, text); }
  static void Digits(wchar_t* out, unsigned index) { ::_swprintf_s_l(out, 16, L"%.4i", nullptr, index); }
};

// Literals in either character type.
template <class Char>
std::basic_string<Char> Text(const char* ascii) {
  return {ascii, ascii + std::strlen(ascii)};
}

template <class Char>
struct Components {
  Char drive[_MAX_DRIVE], directory[_MAX_DIR], name[_MAX_FNAME], extension[_MAX_EXT];

  explicit Components(const Char* path) { Runtime<Char>::Split(path, drive, directory, name, extension); }
};

template <class Char>
class PathRows {
 public:
  void Run() {
    Get("drive", 10, [](const fs::path& p) { return p.root_name(); }, {1, 0, 0, 0});
    Get("directory", 11,
        [](const fs::path& p) { return p.root_directory() / p.relative_path().parent_path(); }, {0, 1, 0, 0});
    Get("name", 12, [](const fs::path& p) { return p.stem(); }, {0, 0, 1, 0});
    Get("extension", 13, [](const fs::path& p) { return p.extension(); }, {0, 0, 0, 1});
    Get("drive and directory", 14, [](const fs::path& p) { return p.parent_path(); }, {1, 1, 0, 0});
    Get("name and extension", 15, [](const fs::path& p) { return p.filename(); }, {0, 0, 1, 1});

    using C = Components<Char>;
    using S = const Char*;
    Change(
        "replace the drive", 20, "D:", [](C& c, S text) { Runtime<Char>::Copy(c.drive, text); },
        [](fs::path& p, const fs::path& text) { p = text / p.root_directory() / p.relative_path(); });
    Change(
        "replace the directory", 21, "\\new\\place\\",
        [](C& c, S text) { Runtime<Char>::Copy(c.directory, text); },
        [](fs::path& p, const fs::path& text) { p = p.root_name() / text / p.filename(); });
    Change(
        "replace the name", 22, "other", [](C& c, S text) { Runtime<Char>::Copy(c.name, text); },
        [](fs::path& p, const fs::path& text) {
          fs::path name = text;
          name += p.extension();
          p.replace_filename(name);
        });
    Change(
        "replace the extension", 23, ".new", [](C& c, S text) { Runtime<Char>::Copy(c.extension, text); },
        [](fs::path& p, const fs::path& text) { p.replace_extension(text); });
    Change(
        "replace name and extension", 24, "D:\\from\\other.new",
        [](C& c, S text) {
          const C other(text);
          Runtime<Char>::Copy(c.name, other.name);
          Runtime<Char>::Copy(c.extension, other.extension);
        },
        [](fs::path& p, const fs::path& text) { p.replace_filename(text.filename()); });
    Change(
        "replace drive and directory", 28, "D:\\new\\place\\",
        [](C& c, S text) {
          const C other(text);
          Runtime<Char>::Copy(c.drive, other.drive);
          Runtime<Char>::Copy(c.directory, other.directory);
        },
        [](fs::path& p, const fs::path& text) { p = text.parent_path() / p.filename(); });
    Change(
        "add a directory", 30, "old", [](C& c, S text) { Runtime<Char>::Append(c.directory, text); },
        [](fs::path& p, const fs::path& text) { p = p.parent_path() / text / p.filename(); });
    Change(
        "add to the name", 32, "_bak", [](C& c, S text) { Runtime<Char>::Append(c.name, text); },
        [](fs::path& p, const fs::path& text) {
          fs::path name = p.stem();
          name += text;
          name += p.extension();
          p.replace_filename(name);
        });
    AddIndex();
  }

 private:
  struct Parts {
    bool drive, directory, name, extension;
  };
  using Buffer = Char[_MAX_PATH];

  // std::filesystem's narrow form takes bytes for UTF-8, and this toolchain's archive of it belongs to the
  // other C runtime: only the wide form is there to compare with.
  template <class Change>
  Way Filesystem(Change change) {
    if constexpr (std::is_same_v<Char, wchar_t>) {
      return Calls([=, this] {
        SetPath();
        fs::path whole(out_);
        change(whole);
        Runtime<Char>::Copy(out_, whole.c_str());
      });
    } else {
      return nullptr;
    }
  }

  std::string Name(const char* operation) const { return std::string(operation) + Runtime<Char>::kForm; }

  template <class Path>
  void Get(const char* operation, unsigned ordinal, Path filesystem, Parts parts) {
    const auto get = reinterpret_cast<int (*)(const Char*, Char*, std::size_t)>(
        reinterpret_cast<void*>(Address(Runtime<Char>::kBase + ordinal)));
    const bool one = parts.drive + parts.directory + parts.name + parts.extension == 1;
    Measure("Paths", Name(operation), path_.size(), Calls([=, this] { get(path_.c_str(), out_, _MAX_PATH); }),
            Calls([=, this] {
              const Components<Char> c(path_.c_str());
              if (one) {
                Runtime<Char>::Copy(out_, parts.drive       ? c.drive
                                          : parts.directory ? c.directory
                                          : parts.name      ? c.name
                                                            : c.extension);
              } else {
                Runtime<Char>::Make(out_, parts.drive ? c.drive : nullptr,
                                    parts.directory ? c.directory : nullptr, parts.name ? c.name : nullptr,
                                    parts.extension ? c.extension : nullptr);
              }
            }),
            Filesystem([=](fs::path& whole) { whole = filesystem(whole); }));
  }

  template <class Bare, class Path>
  void Change(const char* operation, unsigned ordinal, const char* argument, Bare bare, Path filesystem) {
    const auto change = reinterpret_cast<int (*)(Char*, std::size_t, const Char*)>(
        reinterpret_cast<void*>(Address(Runtime<Char>::kBase + ordinal)));
    const std::basic_string<Char> text = Text<Char>(argument);
    Measure("Paths", Name(operation), path_.size(), Calls([=, this] {
              SetPath();
              change(out_, _MAX_PATH, text.c_str());
            }),
            Calls([=, this] {
              SetPath();
              Components<Char> c(out_);
              bare(c, text.c_str());
              Runtime<Char>::Make(out_, c.drive, c.directory, c.name, c.extension);
            }),
            Filesystem([=, other = Text<wchar_t>(argument)](fs::path& whole) {
              filesystem(whole, fs::path(other));
            }));
  }

  void AddIndex() {
    const auto add = reinterpret_cast<int (*)(Char*, std::size_t, unsigned, unsigned)>(
        reinterpret_cast<void*>(Address(Runtime<Char>::kBase + 33)));
    Measure("Paths", Name("add an index"), path_.size(), Calls([=, this] {
              SetPath();
              add(out_, _MAX_PATH, 7, 4);
            }),
            Calls([=, this] {
              SetPath();
              Components<Char> c(out_);
              Char digits[16];
              Runtime<Char>::Digits(digits, 7);
              Runtime<Char>::Append(c.name, digits);
              Runtime<Char>::Make(out_, c.drive, c.directory, c.name, c.extension);
            }),
            Filesystem([](fs::path& whole) {
              fs::path name = whole.stem();
              wchar_t digits[16];
              Runtime<wchar_t>::Digits(digits, 7);
              name += digits;
              name += whole.extension();
              whole.replace_filename(name);
            }));
  }

  // Every way pays for it.
  void SetPath() { std::memcpy(out_, path_.c_str(), (path_.size() + 1) * sizeof(Char)); }

  const std::basic_string<Char> path_ =
      Text<Char>("C:\\Program Files\\Maker\\TOOLS\\Viewer\\view.settings.ini");
  Buffer out_;
};

}  // namespace

void Paths() {
  PathRows<wchar_t>().Run();
  PathRows<char>().Run();
}

}  // namespace bench
