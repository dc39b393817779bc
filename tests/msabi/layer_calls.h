// SPDX-License-Identifier: MIT
// layer_calls.h: calls through zera.hpp, in a source that has the standard library and the platform's header.
#pragma once

/// Each gives what the layer gives, or lets out what the library raises.
bool CopyByLayer(const wchar_t* from, const wchar_t* to);
/// The text goes in as a view, of more characters than the layer has room for without the heap.
bool ExistsByLayer(const char* text, unsigned long long length);
/// The bytes of the UTF-8 form, or -1 when they are not "Z\xC3\xBC".
int Utf8ByLayer();
/// The text stands in an object of the layer's when the library gets it. Whether there was cipher text.
bool EncryptByLayer(const char* passPhrase, const char* text);
/// The string buffers that the layer's objects have not given back.
long BuffersOfLayer();
