// SPDX-License-Identifier: MIT
//! What the tests of this crate share, and those of the whole of it.

use std::ffi::c_void;
use std::path::PathBuf;
use std::process::Command;
use std::sync::{Mutex, MutexGuard, PoisonError};
use std::{env, fs, process};

use crate::platform::by_name;
use crate::raw::*;
use crate::{by_ordinal, string_buffers_in_use, Error};

static STRINGS: Mutex<()> = Mutex::new(());

/// For tests that make strings: one at a time, and at its end every buffer is given back.
pub struct Alone {
    _lock: MutexGuard<'static, ()>,
}

impl Alone {
    pub fn new() -> Self {
        let alone = Self { _lock: STRINGS.lock().unwrap_or_else(PoisonError::into_inner) };
        assert_eq!(string_buffers_in_use(), 0);
        alone
    }
}

impl Drop for Alone {
    fn drop(&mut self) {
        if !std::thread::panicking() {
            assert_eq!(string_buffers_in_use(), 0, "a string's buffer was not given back");
        }
    }
}

/// A folder for a test's files, deleted with what is in it.
pub struct Folder(PathBuf);

impl Folder {
    pub fn new(name: &str) -> Self {
        let folder = env::temp_dir().join(format!("zeratools-{}-{name}", process::id()));
        fs::create_dir(&folder).unwrap();
        Self(folder)
    }

    pub fn file(&self, name: &str) -> PathBuf {
        self.0.join(name)
    }
}

impl Drop for Folder {
    fn drop(&mut self) {
        // Its files alone: no test makes folders in it.
        for entry in fs::read_dir(&self.0).into_iter().flatten().flatten() {
            let _ = fs::remove_file(entry.path());
        }
        let _ = fs::remove_dir(&self.0);
    }
}

#[test]
fn every_export_has_its_number() {
    assert_eq!(EXPORTS.len(), 142);
    for export in EXPORTS {
        assert!(!by_name(export.name).is_null(), "{}", export.name);
        assert_eq!(by_name(export.name), by_ordinal(export.ordinal), "{}", export.name);
        let partner = export.partner.map(|name| EXPORTS.iter().find(|other| other.name == name).unwrap());
        assert!(partner.map_or(true, |other| other.partner == Some(export.name)), "{}", export.name);
    }
    assert!(by_ordinal(35).is_null() && by_ordinal(1092).is_null());
    assert_eq!(by_ordinal(ordinal::ZERA_TOOLS_ROUND_INT), by_name("ZERA_TOOLS_ROUND_INT"));
    assert_eq!(unsafe { ZERA_TOOLS_ROUND_INT(2.5) }, 3);
}

#[test]
fn the_list_tells_what_is_raised() {
    let raising = |class: &str| -> Vec<&str> {
        let raises = |export: &&Export| export.raises.contains(&class);
        EXPORTS.iter().filter(raises).filter_map(|export| export.name.strip_prefix("ZERA_TOOLS_")).collect()
    };
    let files = ["FILE_COPY", "FILE_COPY_UC", "FILE_COMPARE", "FILE_COMPARE_UC", "FILE_COPY_ALL", "FILE_COPY_ALL_UC"];
    assert_eq!(raising("CFileException"), files);
    assert_eq!(raising("COleException"), ["FILE_GET_TIME_MODIFIED", "FILE_GET_TIME_MODIFIED_UC"]);
    assert_eq!(raising("CInvalidArgException"), ["ENC", "ENC_UC", "DEC_UC"]);
    assert_eq!(EXPORTS.iter().map(|export| export.raises.len()).sum::<usize>(), files.len() + 5);
}

#[test]
fn a_message_reaches_a_thread() {
    #[link(name = "user32")]
    extern "system" {
        fn GetCurrentThreadId() -> u32;
        fn PeekMessageW(message: *mut [u64; 6], window: usize, first: u32, last: u32, remove: u32) -> i32;
    }
    unsafe {
        let mut message = [0; 6];
        PeekMessageW(&mut message, 0, 0, 0, 0);
        let mut own = Thread::new(GetCurrentThreadId());
        assert_eq!(ZERA_TOOLS_POSTTHREADMESSAGE(&mut own, 0x8001, 11, -12), 1);
        assert_eq!(PeekMessageW(&mut message, 0, 0, 0, 1), 1);
        assert_eq!((message[1] as u32, message[2], message[3] as i64), (0x8001, 11, -12));
    }
}

/// Starts this program again with one test alone.
fn ends_with(test: &str) -> Option<i32> {
    let mut child = Command::new(env::current_exe().unwrap());
    child.env("RUST_BACKTRACE", "0").args(["--exact", test, "--ignored", "--nocapture"]);
    child.output().unwrap().status.code()
}

#[test]
fn what_the_library_raises_ends_the_process() {
    assert_eq!(ends_with("tests::child_that_raises"), Some(0xE06D_7363_u32 as i32));
    assert_eq!(ends_with("tests::child_that_does_not_raise"), Some(0));
}

#[test]
#[ignore = "ends the process; started by the test above"]
fn child_that_raises() {
    extern "system" {
        fn SetUnhandledExceptionFilter(filter: unsafe extern "system" fn(*mut c_void) -> i32) -> *mut c_void;
    }
    // The process ends with the exception's code, without a debugger or a dialog.
    unsafe extern "system" fn end(_: *mut c_void) -> i32 {
        1
    }
    unsafe { SetUnhandledExceptionFilter(end) };
    let caught = std::panic::catch_unwind(|| {
        let mut text = [0; 8];
        unsafe { ZERA_TOOLS_ENC("pass\0".as_ptr().cast(), "ab".as_ptr(), 2, text.as_mut_ptr(), 8, 1) }
    });
    // Another code than the exception's, should it come back here.
    process::exit(if caught.is_ok() { 2 } else { 3 });
}

#[test]
#[ignore = "started by the test above"]
fn child_that_does_not_raise() {
    let _alone = Alone::new();
    assert_eq!(crate::crypt::encrypt_bytes(b"pass", b"ab").map(|cipher| cipher.len()), Ok(4));
}

#[test]
fn errors_say_what_is_wrong() {
    let said = |error: Error| error.to_string();
    assert_eq!(said(Error::InteriorNul { at: 3 }), "the text has a NUL at 3");
    assert_eq!(said(Error::TooLong { length: 260, limit: 259 }), "the length is 260, the limit 259");
    assert_eq!(said(Error::BeyondByte { character: 'Ł' }), "'Ł' is beyond U+00FF; encrypt its bytes instead");
    assert_eq!(said(Error::NotUnicode), "the library's text is no valid UTF-16");
    assert_eq!(said(Error::OutOfMemory), "memory is exhausted");
    assert_eq!(said(Error::Answer { export: "ZERA_TOOLS_X", answer: -1 }), "ZERA_TOOLS_X answers -1");
}
