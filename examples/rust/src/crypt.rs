// SPDX-License-Identifier: MIT
//! Texts and bytes under a pass phrase, as printable cipher text. It keeps a text from a casual reader and is no
//! protection against an attacker.
//!
//! The library encrypts bytes; of a character it takes the low byte. Where that would lose something, the functions for
//! texts refuse; [`encrypt_bytes`] takes anything, UTF-8 text for one.

use crate::raw::*;
use crate::text::terminated;
use crate::Error;

/// Encrypts a text of characters up to U+00FF. As `ZERA_TOOLS_ENC_STRING_L_UC`.
pub fn encrypt_text(pass_phrase: &str, plain: &str) -> Result<String, Error> {
    let pass_phrase = terminated(bytes_of(pass_phrase)?.into_iter())?;
    let plain = WideString::from_units(&bytes_of(plain)?)?;
    let mut cipher = WideString::new();
    let answer = unsafe { ZERA_TOOLS_ENC_STRING_L_UC(pass_phrase.as_ptr(), &plain, &mut cipher) };
    if answer < 0 {
        return Err(Error::Answer { export: "ZERA_TOOLS_ENC_STRING_L_UC", answer });
    }
    cipher.to_text()
}

/// Decrypts what [`encrypt_text`] gave. As `ZERA_TOOLS_DEC_STRING_UC`.
pub fn decrypt_text(pass_phrase: &str, cipher: &str) -> Result<String, Error> {
    let pass_phrase = terminated(bytes_of(pass_phrase)?.into_iter())?;
    let text = terminated(cipher.encode_utf16())?;
    let mut plain = WideString::new();
    let answer = unsafe { ZERA_TOOLS_DEC_STRING_UC(pass_phrase.as_ptr(), text.as_ptr(), &mut plain) };
    decrypted("ZERA_TOOLS_DEC_STRING_UC", answer, &text)?;
    plain.to_text()
}

/// Encrypts bytes. As `ZERA_TOOLS_ENC_UC` with hexadecimal digits.
pub fn encrypt_bytes(pass_phrase: &[u8], plain: &[u8]) -> Result<String, Error> {
    let (pass_phrase, plain) = (ByteArray::from_bytes(pass_phrase)?, ByteArray::from_bytes(plain)?);
    let mut cipher = WideString::new();
    let answer = unsafe { ZERA_TOOLS_ENC_UC(&pass_phrase, &plain, &mut cipher, 1) };
    if answer < 0 {
        return Err(Error::Answer { export: "ZERA_TOOLS_ENC_UC", answer });
    }
    cipher.to_text()
}

/// Decrypts what [`encrypt_bytes`] gave. As `ZERA_TOOLS_DEC_UC` with hexadecimal digits.
pub fn decrypt_bytes(pass_phrase: &[u8], cipher: &str) -> Result<Vec<u8>, Error> {
    let pass_phrase = ByteArray::from_bytes(pass_phrase)?;
    let text = terminated(cipher.encode_utf16())?;
    let mut plain = ByteArray::new();
    let answer = unsafe { ZERA_TOOLS_DEC_UC(&pass_phrase, text.as_ptr(), 1, &mut plain) };
    decrypted("ZERA_TOOLS_DEC_UC", answer, &text)?;
    Ok(plain.as_slice().to_vec())
}

/// One unit for each character, none beyond a byte.
fn bytes_of(text: &str) -> Result<Vec<u16>, Error> {
    text.chars()
        .map(|character| u8::try_from(character).map(u16::from).map_err(|_| Error::BeyondByte { character }))
        .collect()
}

/// -1 is a failure; so is no byte for a text that has some, which the platform's service is the reason of.
fn decrypted(export: &'static str, answer: i32, text: &[u16]) -> Result<(), Error> {
    let pairs = (text.len() - 1) / 2;
    if answer < 0 || (answer == 0 && pairs > 0) {
        return Err(Error::Answer { export, answer });
    }
    Ok(())
}

#[cfg(test)]
mod tests {
    use super::*;
    use crate::tests::Alone;

    #[test]
    fn texts_come_back() {
        let _alone = Alone::new();
        for text in ["", "licence 4711", "grün\0ÿ", &"long ".repeat(10_000)] {
            let cipher = encrypt_text("pass phrase", text).unwrap();
            assert_eq!(cipher.len(), text.chars().count() * 2);
            assert!(cipher.chars().all(|digit| matches!(digit, '0'..='9' | 'A'..='F')));
            assert_eq!(decrypt_text("pass phrase", &cipher).as_deref(), Ok(text));
            assert_eq!(decrypt_text("pass phrase", &cipher.to_lowercase()).as_deref(), Ok(text));
        }
        let cipher = encrypt_text("Maß", "licence").unwrap();
        assert_ne!(decrypt_text("maß", &cipher).as_deref(), Ok("licence"));
        // The same bytes under the same key, whichever export.
        assert_eq!(encrypt_bytes(b"Ma\xDF", b"licence"), Ok(cipher));
    }

    #[test]
    fn bytes_come_back() {
        let _alone = Alone::new();
        let all: Vec<u8> = (0..=255).collect();
        for bytes in [&all[..], &[0], &[], "Λάμπρος".as_bytes()] {
            let cipher = encrypt_bytes(&all, bytes).unwrap();
            assert_eq!(decrypt_bytes(&all, &cipher).as_deref(), Ok(bytes));
        }
    }

    #[test]
    fn mistakes_are_clear() {
        let _alone = Alone::new();
        assert_eq!(encrypt_text("a\0", "text"), Err(Error::InteriorNul { at: 1 }));
        assert_eq!(encrypt_text("Łódź", "text"), Err(Error::BeyondByte { character: 'Ł' }));
        assert_eq!(encrypt_text("pass", "€ 10"), Err(Error::BeyondByte { character: '€' }));
        assert_eq!(decrypt_text("pass", "41\0"), Err(Error::InteriorNul { at: 2 }));
        let unreadable = |export| Err(Error::Answer { export, answer: -1 });
        assert_eq!(decrypt_text("pass", "no digits"), unreadable("ZERA_TOOLS_DEC_STRING_UC"));
        assert_eq!(decrypt_bytes(b"pass", "no digits").map(|_| String::new()), unreadable("ZERA_TOOLS_DEC_UC"));
        // The platform's service cannot be made to fail here; what its answer becomes can be seen.
        assert!(decrypted("E", 0, &[0]).is_ok() && decrypted("E", 0, &[65, 0]).is_ok());
        assert_eq!(decrypted("E", 0, &[65, 65, 0]), Err(Error::Answer { export: "E", answer: 0 }));
    }
}
