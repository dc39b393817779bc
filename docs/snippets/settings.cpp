// SPDX-License-Identifier: MIT
// Examples of the reference: settings files, read, written, and put together in a buffer.
#include <ZERATools.h>
#include <gtest/gtest.h>

#include "support/TempFolder.h"

TEST(Snippets, SettingsFiles) {
  const test::TempFolder folder;
  const std::wstring path = folder.File(L"view.ini", "[Window]\r\n");
  const std::string narrowPath = test::Ansi(path);
  const wchar_t* const file = path.c_str();
  [[maybe_unused]] const char* const ansiFile = narrowPath.c_str();
  {
    //! [ZERA_TOOLS_WRITE_STRING_UC]
    // What the code page of the file cannot express is kept beside the value as UTF-8.
    ZERA_TOOLS_WRITE_STRING_UC(L"User", L"Name", file, L"Zo\u00eb \u03a9");
    //! [ZERA_TOOLS_WRITE_STRING_UC]
    //! [ZERA_TOOLS_READ_STRING_UC]
    wchar_t name[64];
    ZERA_TOOLS_READ_STRING_UC(L"User", L"Name", file, L"nobody", name, 64);
    //! [ZERA_TOOLS_READ_STRING_UC]
    EXPECT_STREQ(name, L"Zo\u00eb \u03a9");
  }
  {
    //! [ZERA_TOOLS_WRITE_STRING]
    ZERA_TOOLS_WRITE_STRING("User", "Group", ansiFile, "guests");
    ZERA_TOOLS_WRITE_STRING("User", "Password", ansiFile, nullptr);  // removes the key
    //! [ZERA_TOOLS_WRITE_STRING]
    //! [ZERA_TOOLS_READ_STRING]
    char group[64];
    ZERA_TOOLS_READ_STRING("User", "Group", ansiFile, "none", group, sizeof group);
    //! [ZERA_TOOLS_READ_STRING]
    EXPECT_STREQ(group, "guests");
  }
  {
    //! [ZERA_TOOLS_WRITE_INT_UC]
    ZERA_TOOLS_WRITE_INT_UC(L"Window", L"Left", file, -40);
    //! [ZERA_TOOLS_WRITE_INT_UC]
    //! [ZERA_TOOLS_READ_INT_UC]
    // 100 if there is no such key; brought between 0 and 4000 otherwise.
    const int left = ZERA_TOOLS_READ_INT_UC(L"Window", L"Left", file, 100, 0, 4000);  // 0
    //! [ZERA_TOOLS_READ_INT_UC]
    EXPECT_EQ(left, 0);
  }
  {
    //! [ZERA_TOOLS_WRITE_UINT_UC]
    ZERA_TOOLS_WRITE_UINT_UC(L"Window", L"Color", file, 0xFF8000u);
    //! [ZERA_TOOLS_WRITE_UINT_UC]
    //! [ZERA_TOOLS_READ_UINT_UC]
    const unsigned int color = ZERA_TOOLS_READ_UINT_UC(L"Window", L"Color", file, 0, 0, 0xFFFFFF);
    //! [ZERA_TOOLS_READ_UINT_UC]
    EXPECT_EQ(color, 0xFF8000u);
  }
  {
    //! [ZERA_TOOLS_WRITE_WORD_UC]
    ZERA_TOOLS_WRITE_WORD_UC(L"Link", L"Port", file, 8080);
    //! [ZERA_TOOLS_WRITE_WORD_UC]
    //! [ZERA_TOOLS_READ_WORD_UC]
    const WORD port = ZERA_TOOLS_READ_WORD_UC(L"Link", L"Port", file, 80, 1, 65535);
    //! [ZERA_TOOLS_READ_WORD_UC]
    EXPECT_EQ(port, 8080);
  }
  {
    //! [ZERA_TOOLS_WRITE_DOUBLE_UC]
    ZERA_TOOLS_WRITE_DOUBLE_UC(L"Window", L"Scale", file, 1.25);  // with a point, whatever the locale
    //! [ZERA_TOOLS_WRITE_DOUBLE_UC]
    //! [ZERA_TOOLS_READ_DOUBLE_UC]
    const double scale = ZERA_TOOLS_READ_DOUBLE_UC(L"Window", L"Scale", file, 1.0, 0.5, 4.0);
    //! [ZERA_TOOLS_READ_DOUBLE_UC]
    EXPECT_EQ(scale, 1.25);
  }
  {
    //! [ZERA_TOOLS_WRITE_FLOAT_UC]
    ZERA_TOOLS_WRITE_FLOAT_UC(L"Window", L"Zoom", file, 2.5f);
    //! [ZERA_TOOLS_WRITE_FLOAT_UC]
    //! [ZERA_TOOLS_READ_FLOAT_UC]
    const float zoom = ZERA_TOOLS_READ_FLOAT_UC(L"Window", L"Zoom", file, 1.0f, 0.5f, 4.0f);
    //! [ZERA_TOOLS_READ_FLOAT_UC]
    EXPECT_EQ(zoom, 2.5f);
  }
}

TEST(Snippets, SettingsTextInABuffer) {
  //! [ZERA_TOOLS_BUFWRITE_SECTION_UC]
  // Each call writes at the place where the one before ended.
  wchar_t text[512];
  wchar_t* position = text;
  size_t room = 512;
  size_t count = 0;
  if (ZERA_TOOLS_BUFWRITE_SECTION_UC(L"Window", position, room, &count)) {
    position += count;
    room -= count;
  }
  //! [ZERA_TOOLS_BUFWRITE_SECTION_UC]
  EXPECT_STREQ(text, L"[Window]\n");
  //! [ZERA_TOOLS_BUFWRITE_STRING_UC]
  if (ZERA_TOOLS_BUFWRITE_STRING_UC(L"Title", position, room, L"View", &count)) {
    position += count;
    room -= count;
  }
  //! [ZERA_TOOLS_BUFWRITE_STRING_UC]
  //! [ZERA_TOOLS_BUFWRITE_INT_UC]
  if (ZERA_TOOLS_BUFWRITE_INT_UC(L"Left", position, room, -40, &count)) {
    position += count;
    room -= count;
  }
  //! [ZERA_TOOLS_BUFWRITE_INT_UC]
  //! [ZERA_TOOLS_BUFWRITE_UINT_UC]
  if (ZERA_TOOLS_BUFWRITE_UINT_UC(L"Width", position, room, 640, &count)) {
    position += count;
    room -= count;
  }
  //! [ZERA_TOOLS_BUFWRITE_UINT_UC]
  EXPECT_STREQ(text, L"[Window]\nTitle=View\nLeft=-40\nWidth=640\n");
  //! [ZERA_TOOLS_BUFWRITE_DOUBLE_UC]
  if (ZERA_TOOLS_BUFWRITE_DOUBLE_UC(L"Scale", position, room, 1.25, &count)) {
    position += count;
    room -= count;
  }
  //! [ZERA_TOOLS_BUFWRITE_DOUBLE_UC]
  //! [ZERA_TOOLS_BUFWRITE_FLOAT_UC]
  if (ZERA_TOOLS_BUFWRITE_FLOAT_UC(L"Zoom", position, room, 2.5f, &count)) {
    position += count;
    room -= count;
  }
  //! [ZERA_TOOLS_BUFWRITE_FLOAT_UC]
  EXPECT_EQ(text + std::wstring(text).size(), position);
  EXPECT_EQ(static_cast<size_t>(position - text) + room, 512u);
}
