// SPDX-License-Identifier: MIT
#include "Texts.h"

#include "Encrypt.h"
#include "frame/WideText.h"

namespace crypt {
namespace {

// The pass phrase and the text may lie in the very string that receives the result. The bytes are
// taken before the engine empties it.
template <class Char>
int EncryptText(const Char* passPhrase, const CStringT<Char>& plain, CStringT<Char>& text, Form form) {
  constexpr int kShort = 8;
  const SecretBytes key(passPhrase);
  const SecretBytes bytes(plain.GetString(), plain.GetLength());
  CEncrypt engine;
  const int result = engine.EncryptToText(key, bytes, text, TRUE);
  // KEPT FOR HOSTS: the result stays the length of the whole cipher text, which hosts compare with the
  // length of their plain text.
  if (result != -1 && form == Form::short8) text.Truncate(kShort);
  return result;
}

// Decrypts into an array of the library's own and hands out what fits. `key` and `text` are copies.
int Decrypt(const SecretBytes& key, const frame::WideText& text, UINT hex, void* plain, UINT capacity) {
  SecretBytes bytes;
  CEncrypt engine;
  if (engine.DecryptText(key, text, hex != 0, bytes) == -1) return -1;
  const auto count = static_cast<std::size_t>(bytes.GetSize());
  if (count > capacity) return -1;
  if (count != 0) std::memcpy(plain, bytes.GetData(), count);
  return static_cast<int>(count);
}

// Nothing of pass phrase and engine is left when this returns.
int EncryptNothing(const char* passPhrase, CStringA& text, BOOL hex) {
  const SecretBytes key(passPhrase);
  const SecretBytes nothing;
  CEncrypt engine;
  return engine.EncryptToText(key, nothing, text, hex);
}

// Empties a string at the end of a scope, however it is left, unless it holds the result: until then it may
// hold the inputs.
class EmptyUnlessDone {
 public:
  explicit EmptyUnlessDone(CStringW& text) noexcept : text_(text) {}
  EmptyUnlessDone(const EmptyUnlessDone&) = delete;
  EmptyUnlessDone& operator=(const EmptyUnlessDone&) = delete;
  ~EmptyUnlessDone() {
    if (!done_) text_.Empty();
  }

  void Done() noexcept { done_ = true; }

 private:
  CStringW& text_;
  bool done_ = false;
};

}  // namespace

int Encrypt(const ByteArray& passPhrase, const ByteArray& plain, CStringW& text, BOOL hex) {
  CEncrypt engine;
  return engine.EncryptToText(passPhrase, plain, text, hex);
}

int Decrypt(const ByteArray& passPhrase, const wchar_t* text, BOOL hex, ByteArray& plain) {
  CEncrypt engine;
  return engine.DecryptText(passPhrase, text, hex, plain);
}

int EncryptToBuffer(const char* passPhrase, int count, char* text, UINT capacity, BOOL hex) {
  // KEPT FOR HOSTS: only a count of 0 has ever worked. The bytes were to be put into an array of no
  // elements, which refuses the first one; hosts have learned to expect the exception, and the bytes
  // themselves are never read.
  if (count != 0) AfxThrowInvalidArgException();
  CStringA cipher;
  if (EncryptNothing(passPhrase, cipher, hex) == -1) return -1;
  const int length = cipher.GetLength();
  if (static_cast<UINT>(length) + 1 > capacity) return -1;
  // A missing buffer runs the host's handler, which may raise an exception that runs no destructor of ours:
  // the cipher text of no bytes is empty, and holds none of a string's storage.
  ::strcpy_s(text, capacity, cipher);
  return length;
}

int DecryptToBuffer(const char* passPhrase, const char* text, UINT hex, BYTE* plain, UINT capacity) {
  return Decrypt(SecretBytes(passPhrase), frame::WideText(text), hex, plain, capacity);
}

int EncryptString(const char* passPhrase, const CStringA& plain, CStringA& text, Form form) {
  return EncryptText(passPhrase, plain, text, form);
}

int EncryptString(const wchar_t* passPhrase, const CStringW& plain, CStringW& text, Form form) {
  return EncryptText(passPhrase, plain, text, form);
}

int DecryptString(const char* passPhrase, const CStringA& text, CStringA& plain) {
  // KEPT FOR HOSTS: one byte less than the room is used, so 99 bytes are the longest text that comes
  // back; hosts keep longer ones in pieces.
  constexpr int kRoom = 100;
  const SecretBytes key(passPhrase);
  const frame::WideText cipher(text);
  char* const out = plain.GetBuffer(kRoom);
  const int result = Decrypt(key, cipher, TRUE, out, kRoom - 1);
  if (result == -1) {
    plain.Empty();
    return result;
  }
  int length = 0;
  while (length < result && out[length]) ++length;
  plain.ReleaseBufferSetLength(length);
  return result;
}

int DecryptString(const wchar_t* passPhrase, const wchar_t* text, CStringW& plain) {
  EmptyUnlessDone guard(plain);
  const SecretBytes key(passPhrase);
  CEncrypt engine;
  const int result = engine.DecryptText(key, text, TRUE, plain);
  if (result > 0) guard.Done();
  return result;
}

}  // namespace crypt
