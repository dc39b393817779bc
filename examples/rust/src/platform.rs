// SPDX-License-Identifier: MIT
//! The platform's functions, as far as this crate needs them.

use std::ffi::c_void;
use std::os::raw::c_char;

extern "system" {
    pub fn FreeLibrary(module: *mut c_void) -> i32;
    pub fn GetProcessHeap() -> *mut c_void;
    pub fn HeapAlloc(heap: *mut c_void, flags: u32, size: usize) -> *mut c_void;
    pub fn HeapFree(heap: *mut c_void, flags: u32, block: *mut c_void) -> i32;
    pub fn HeapReAlloc(heap: *mut c_void, flags: u32, block: *mut c_void, size: usize) -> *mut c_void;
    fn GetModuleHandleA(name: *const c_char) -> *mut c_void;
    fn GetProcAddress(module: *mut c_void, name: *const c_char) -> *mut c_void;
    fn LoadLibraryA(name: *const c_char) -> *mut c_void;
}

/// An export by its number, as hosts bind that load the library when they need it; null if there is none. What it
/// points at is a function of the type that [`crate::raw`] declares.
pub fn by_ordinal(ordinal: u16) -> *const c_void {
    // A number in place of a name, as the platform takes it.
    unsafe { GetProcAddress(GetModuleHandleA("ZERATools.dll\0".as_ptr().cast()), ordinal as usize as *const c_char) }
}

/// A function of the universal C runtime, in which byte arrays live whatever runtime this crate is linked to; null if
/// there is none. The name ends with a zero.
pub fn runtime_function(name: &'static [u8]) -> *const c_void {
    assert!(name.ends_with(&[0]));
    unsafe {
        let file = "ucrtbase.dll\0".as_ptr().cast();
        let mut runtime = GetModuleHandleA(file);
        if runtime.is_null() {
            runtime = LoadLibraryA(file);
        }
        GetProcAddress(runtime, name.as_ptr().cast())
    }
}

#[cfg(test)]
pub fn module_handle(name: &str) -> *mut c_void {
    let name = std::ffi::CString::new(name).unwrap();
    unsafe { GetModuleHandleA(name.as_ptr()) }
}

#[cfg(test)]
pub fn by_name(name: &str) -> *const c_void {
    let name = std::ffi::CString::new(name).unwrap();
    unsafe { GetProcAddress(module_handle("ZERATools.dll"), name.as_ptr()) }
}
