// SPDX-License-Identifier: MIT
//! The framework's string objects.

use std::marker::PhantomData;
use std::mem::size_of;
use std::os::raw::c_int;
use std::ptr;
use std::slice;
use std::sync::atomic::Ordering;

use crate::string_manager::{Header, MANAGER};
use crate::Error;

/// A unit of text: `u16` or `u8`.
pub trait Unit: sealed::Sealed + Copy {}
impl Unit for u16 {}
impl Unit for u8 {}

mod sealed {
    pub trait Sealed {}
    impl Sealed for u16 {}
    impl Sealed for u8 {}
}

/// A string object as the exports take it: one pointer to zero-terminated characters behind a header. An export gets
/// a pointer to the object (`&mut string`), and may put another buffer into it.
#[repr(transparent)]
pub struct StringObject<U: Unit> {
    text: *mut U,
    unit: PhantomData<U>,
}

/// UTF-16 text.
pub type WideString = StringObject<u16>;
/// Text in the ANSI code page, or UTF-8 bytes where an export says so.
pub type AnsiString = StringObject<u8>;

const _: () = assert!(size_of::<WideString>() == size_of::<usize>(), "a string object is one pointer");

/// As many characters as a string may have on the way to the library, which doubles them at times.
const LIMIT: usize = 0x3FFF_FFF0;

impl<U: Unit> StringObject<U> {
    /// An empty string.
    pub fn new() -> Self {
        let nil = unsafe { (MANAGER.functions.nil)(&MANAGER) };
        Self { text: characters(nil), unit: PhantomData }
    }

    /// A string with these characters, which may have NULs among them.
    pub fn from_units(units: &[U]) -> Result<Self, Error> {
        let mut string = Self::new();
        string.set(units)?;
        Ok(string)
    }

    /// Gives the string another text. With an error it keeps the one that it has.
    pub fn set(&mut self, units: &[U]) -> Result<(), Error> {
        if units.is_empty() {
            *self = Self::new();
            return Ok(());
        }
        let length = length(units.len())?;
        unsafe {
            let fresh = (MANAGER.functions.allocate)(&MANAGER, length, size_of::<U>() as c_int);
            if fresh.is_null() {
                return Err(Error::OutOfMemory);
            }
            let text: *mut U = characters(fresh);
            ptr::copy_nonoverlapping(units.as_ptr(), text, units.len());
            ptr::write_bytes(text.add(units.len()), 0, 1);
            (*fresh).length = length;
            *self = Self { text, unit: PhantomData };
        }
        Ok(())
    }

    /// The characters, without the terminator.
    pub fn units(&self) -> &[U] {
        unsafe { slice::from_raw_parts(self.text, (*self.header()).length as usize) }
    }

    /// The characters with a terminator behind them, for an export that takes a plain pointer.
    pub fn as_ptr(&self) -> *const U {
        self.text
    }

    fn header(&self) -> *mut Header {
        unsafe { self.text.cast::<Header>().sub(1) }
    }
}

fn characters<U>(header: *mut Header) -> *mut U {
    unsafe { header.add(1).cast() }
}

fn length(units: usize) -> Result<c_int, Error> {
    match c_int::try_from(units) {
        Ok(length) if units <= LIMIT => Ok(length),
        _ => Err(Error::TooLong { length: units, limit: LIMIT }),
    }
}

impl WideString {
    /// The text; an error if it has half a character.
    pub fn to_text(&self) -> Result<String, Error> {
        String::from_utf16(self.units()).map_err(|_| Error::NotUnicode)
    }
}

impl<U: Unit> Default for StringObject<U> {
    fn default() -> Self {
        Self::new()
    }
}

impl<U: Unit> Drop for StringObject<U> {
    fn drop(&mut self) {
        unsafe {
            let header = self.header();
            if (*header).references.fetch_sub(1, Ordering::SeqCst) <= 1 {
                // The buffer's own manager takes it back.
                let manager = (*header).manager;
                ((*manager).functions.free)(manager, header);
            }
        }
    }
}

#[cfg(test)]
mod tests {
    use super::*;
    use crate::raw::*;
    use crate::tests::Alone;
    use crate::{string_buffers_in_use, string_manager};

    #[test]
    fn the_header_lies_as_published() {
        let header = Header { manager: &MANAGER, length: 0, capacity: 0, references: Default::default() };
        let base = &header as *const Header as usize;
        let offsets = [
            &header.length as *const _ as usize,
            &header.capacity as *const _ as usize,
            &header.references as *const _ as usize,
        ];
        assert_eq!(offsets.map(|field| field - base), [8, 12, 16]);
    }

    #[test]
    fn strings_take_and_give_buffers() {
        let _alone = Alone::new();
        let mut string = WideString::from_units(&[65, 0, 0xD800]).unwrap();
        assert_eq!((string.units(), string_buffers_in_use()), (&[65, 0, 0xD800][..], 1));
        assert_eq!(string.to_text(), Err(Error::NotUnicode));
        unsafe { assert_eq!(*string.as_ptr().add(3), 0) };
        string.set(&[66]).unwrap();
        assert_eq!((string.to_text(), string_buffers_in_use()), (Ok("B".to_string()), 1));
        string.set(&[]).unwrap();
        assert_eq!((string.units(), string_buffers_in_use()), (&[][..], 0));
        assert_eq!(unsafe { *AnsiString::default().as_ptr() }, 0);
    }

    #[test]
    fn the_library_fills_enlarges_and_empties_them() {
        let _alone = Alone::new();
        let mut bytes = AnsiString::from_units(b"short").unwrap();
        let long: Vec<u16> = "Łódź ".repeat(1000).encode_utf16().chain([0]).collect();
        unsafe { ZERA_TOOLS_STRING_UC_TO_UTF8(long.as_ptr(), &mut bytes) };
        assert_eq!(bytes.units(), "Łódź ".repeat(1000).as_bytes());
        let mut back = WideString::new();
        unsafe { ZERA_TOOLS_STRING_UTF8_TO_UC(bytes.as_ptr().cast(), &mut back) };
        assert_eq!((back.units(), string_buffers_in_use()), (&long[..5000], 2));
        unsafe { ZERA_TOOLS_STRING_UTF8_TO_UC("\0".as_ptr().cast(), &mut back) };
        assert_eq!(back.units(), &[]);
    }

    #[test]
    fn the_manager_answers_null_and_never_unwinds() {
        let _alone = Alone::new();
        let (functions, manager) = (MANAGER.functions, &MANAGER as *const string_manager::Manager);
        unsafe {
            for (chars, size) in [(-1, 2), (0x7FFF_FFF0, 2), (i32::MAX, i32::MAX), (1, -1)] {
                assert!((functions.allocate)(manager, chars, size).is_null(), "{chars} of {size}");
            }
            let header = (functions.allocate)(manager, 4, 2);
            assert!((functions.reallocate)(manager, header, i32::MAX, 2).is_null());
            assert_eq!(((*header).capacity, string_buffers_in_use()), (4, 1));
            let larger = (functions.reallocate)(manager, header, 4000, 2);
            assert_eq!((*larger).capacity, 4000);
            (functions.free)(manager, larger);
            // The empty string's references never go down to none.
            let nil = (functions.nil)(manager);
            (functions.free)(manager, nil);
            assert!((*nil).references.fetch_sub(1, Ordering::SeqCst) > 2);
            assert_eq!((functions.clone)(manager), manager);
        }
    }

    #[test]
    fn lengths_have_a_limit() {
        assert_eq!(length(LIMIT), Ok(0x3FFF_FFF0));
        for units in [LIMIT + 1, usize::MAX] {
            assert_eq!(length(units), Err(Error::TooLong { length: units, limit: LIMIT }));
        }
    }
}
