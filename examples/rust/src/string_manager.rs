// SPDX-License-Identifier: MIT
//! The string manager of this crate, from which the library gets the buffers of our strings.
//!
//! The library calls it in the middle of its own work, so none of these functions may unwind: nothing in them
//! panics, and memory that is exhausted is a null pointer.

use std::ffi::c_void;
use std::mem::size_of;
use std::os::raw::c_int;
use std::ptr::null_mut;
use std::sync::atomic::{AtomicI32, AtomicIsize, Ordering};

use crate::platform::{GetProcessHeap, HeapAlloc, HeapFree, HeapReAlloc};

/// What stands before the characters of every string.
#[repr(C)]
pub struct Header {
    pub manager: *const Manager,
    /// Characters in use, without the terminator.
    pub length: c_int,
    /// Characters there is room for, without the terminator.
    pub capacity: c_int,
    /// Above 1: shared; below 0: locked.
    pub references: AtomicI32,
}

/// A manager's functions, in the order in which the library calls them.
#[repr(C)]
pub struct Functions {
    pub allocate: unsafe extern "C" fn(*const Manager, c_int, c_int) -> *mut Header,
    pub free: unsafe extern "C" fn(*const Manager, *mut Header),
    pub reallocate: unsafe extern "C" fn(*const Manager, *mut Header, c_int, c_int) -> *mut Header,
    pub nil: unsafe extern "C" fn(*const Manager) -> *mut Header,
    pub clone: unsafe extern "C" fn(*const Manager) -> *const Manager,
}

#[repr(C)]
pub struct Manager {
    pub functions: &'static Functions,
}

/// The empty string.
#[repr(C)]
struct Nil {
    header: Header,
    terminator: [u16; 2],
}
// It is written to through its reference count alone.
unsafe impl Sync for Nil {}

const _: () = assert!(size_of::<Header>() == 24, "hosts and library read each other's string headers");
const _: () = assert!(size_of::<Functions>() == 5 * size_of::<usize>() && size_of::<Manager>() == size_of::<usize>());

pub static MANAGER: Manager = Manager { functions: &Functions { allocate, free, reallocate, nil, clone } };
// Two references that nobody gives back keep it shared, so every writer takes a buffer of its own first.
static NIL: Nil = Nil {
    header: Header { manager: &MANAGER, length: 0, capacity: 0, references: AtomicI32::new(2) },
    terminator: [0; 2],
};
static BUFFERS: AtomicIsize = AtomicIsize::new(0);

/// The number of string buffers that are not given back yet: 0 once every string is dropped or empty.
pub fn buffers_in_use() -> isize {
    BUFFERS.load(Ordering::SeqCst)
}

/// Header, characters and terminator; nothing for a length that no string has.
fn bytes(chars: c_int, char_size: c_int) -> Option<usize> {
    if chars >= 0x7FFF_FFF0 {
        return None;
    }
    let units = usize::try_from(chars).ok()?.checked_add(1)?;
    units.checked_mul(usize::try_from(char_size).ok()?)?.checked_add(size_of::<Header>())
}

unsafe extern "C" fn allocate(manager: *const Manager, chars: c_int, char_size: c_int) -> *mut Header {
    let header: *mut Header = match bytes(chars, char_size) {
        Some(size) => HeapAlloc(GetProcessHeap(), 0, size).cast(),
        None => null_mut(),
    };
    if !header.is_null() {
        header.write(Header { manager, length: 0, capacity: chars, references: AtomicI32::new(1) });
        BUFFERS.fetch_add(1, Ordering::SeqCst);
    }
    header
}

unsafe extern "C" fn free(_: *const Manager, header: *mut Header) {
    if header as *const Header != &NIL.header {
        HeapFree(GetProcessHeap(), 0, header as *mut c_void);
        BUFFERS.fetch_sub(1, Ordering::SeqCst);
    }
}

/// The old buffer stays valid when there is no memory for a larger one.
unsafe extern "C" fn reallocate(_: *const Manager, header: *mut Header, chars: c_int, char_size: c_int) -> *mut Header {
    let larger: *mut Header = match bytes(chars, char_size) {
        Some(size) => HeapReAlloc(GetProcessHeap(), 0, header as *mut c_void, size).cast(),
        None => null_mut(),
    };
    if !larger.is_null() {
        (*larger).capacity = chars;
    }
    larger
}

unsafe extern "C" fn nil(_: *const Manager) -> *mut Header {
    NIL.header.references.fetch_add(1, Ordering::SeqCst);
    &NIL as *const Nil as *mut Header
}

/// The manager that copies of this manager's strings use.
unsafe extern "C" fn clone(manager: *const Manager) -> *const Manager {
    manager
}
