// SPDX-License-Identifier: MIT
// ZERATools/zera.hpp: the exports of ZERATools.dll in the habits of today's standard library. Header-only.
//
//   const auto found = zera::application::settings_file();
//   zera::settings settings{found.path};
//   const double zoom = settings.section(L"View").get(L"Zoom", 1.0, {0.1, 8.0});
//   const auto language = zera::application::language(found.path);
//   const zera::language_module texts = zera::application::load_language(language);
//
// The layer adds no rule of its own: what an export answers, it answers; each function names its export,
// whose rules hold. Text goes in as a pointer, a string or a view: only a view is copied, to end it with a
// zero; a NUL inside ends a text, but not one to encrypt. Text comes out as a standard string, by one copy.
//
// What the library raises passes through as it is: an exception of the Microsoft ABI, which a host of that
// ABI catches as the framework's class and which ends a process of another. The functions are usable with
// exceptions off; the standard library then ends the process where it would throw std::bad_alloc.
//
// For the GNU and the Microsoft ABI, with and without the framework's own headers, which come first. C++17;
// with C++20 also std::span and std::stop_token. Any thread may call any function, as far as the export says.
#pragma once

#include "../ZERATools.h"
#include "zera/application.hpp"
#include "zera/crypt.hpp"
#include "zera/directory.hpp"
#include "zera/file.hpp"
#include "zera/path.hpp"
#include "zera/process.hpp"
#include "zera/round.hpp"
#include "zera/settings.hpp"
#include "zera/settings_text.hpp"
#include "zera/text.hpp"
