// SPDX-License-Identifier: MIT
//! The exports as they are, written by the build from `share/zeratools/exports.json`: functions, their numbers, and a
//! table of both. Calls are unsafe: pointers must be valid, texts end with a zero, and capacities count as the list
//! says.

use std::ffi::c_void;
use std::os::raw::c_char;

pub use crate::byte_array::ByteArray;
pub use crate::string_object::{AnsiString, WideString};
pub use crate::thread::Thread;

/// A module's handle; null means the process's executable.
#[allow(clippy::upper_case_acronyms)]
pub type HMODULE = *mut c_void;

/// What the list says of an export.
#[derive(Debug, Clone, Copy, PartialEq, Eq)]
pub struct Export {
    pub name: &'static str,
    pub ordinal: u16,
    /// The export with the other kind of text.
    pub partner: Option<&'static str>,
    /// What it may raise, `CMemoryException` apart, which any may.
    pub raises: &'static [&'static str],
}

include!(concat!(env!("OUT_DIR"), "/exports.rs"));
