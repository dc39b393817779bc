// SPDX-License-Identifier: MIT
//! The framework's byte array.

use std::ffi::c_void;
use std::mem::{size_of, transmute};
use std::{ptr, slice};

use crate::platform::runtime_function;
use crate::Error;

/// A byte array as the exports take it. Its storage lies on the universal C runtime's heap, where the library enlarges
/// and frees it too. Arrays carry pass phrases, so their bytes are wiped before the storage goes.
#[repr(C)]
pub struct ByteArray {
    /// The library never calls through it.
    table: *const c_void,
    data: *mut u8,
    size: isize,
    capacity: isize,
    grow_by: isize,
}

const _: () = assert!(size_of::<ByteArray>() == 40, "hosts and library share byte arrays");

impl ByteArray {
    /// An empty array.
    pub fn new() -> Self {
        Self { table: ptr::null(), data: ptr::null_mut(), size: 0, capacity: 0, grow_by: 0 }
    }

    /// An array with these bytes.
    pub fn from_bytes(bytes: &[u8]) -> Result<Self, Error> {
        let mut array = Self::new();
        if !bytes.is_empty() {
            // No slice has more bytes than the size can tell.
            let storage = allocate(bytes.len());
            if storage.is_null() {
                return Err(Error::OutOfMemory);
            }
            unsafe { ptr::copy_nonoverlapping(bytes.as_ptr(), storage, bytes.len()) };
            array.data = storage;
            array.size = bytes.len() as isize;
            array.capacity = array.size;
        }
        Ok(array)
    }

    pub fn as_slice(&self) -> &[u8] {
        match self.size {
            0 => &[],
            size => unsafe { slice::from_raw_parts(self.data, size as usize) },
        }
    }
}

fn allocate(size: usize) -> *mut u8 {
    type Malloc = unsafe extern "C" fn(usize) -> *mut c_void;
    let function: Option<Malloc> = unsafe { transmute(runtime_function(b"malloc\0")) };
    function.map_or(ptr::null_mut(), |malloc| unsafe { malloc(size) }.cast())
}

fn free(storage: *mut u8) {
    type Free = unsafe extern "C" fn(*mut c_void);
    let function: Option<Free> = unsafe { transmute(runtime_function(b"free\0")) };
    if let Some(free) = function {
        unsafe { free(storage.cast()) };
    }
}

impl Default for ByteArray {
    fn default() -> Self {
        Self::new()
    }
}

impl Drop for ByteArray {
    fn drop(&mut self) {
        if !self.data.is_null() {
            for at in 0..self.capacity {
                unsafe { self.data.offset(at).write_volatile(0) };
            }
            free(self.data);
        }
    }
}

#[cfg(test)]
mod tests {
    use super::*;

    #[test]
    fn the_fields_lie_as_published() {
        let array = ByteArray::new();
        let base = &array as *const ByteArray as usize;
        let offsets =
            [&array.data as *const _ as usize, &array.size as *const _ as usize, &array.capacity as *const _ as usize];
        assert_eq!(offsets.map(|field| field - base), [8, 16, 24]);
    }

    #[test]
    fn bytes_come_back() {
        assert_eq!(ByteArray::default().as_slice(), &[]);
        assert_eq!(ByteArray::from_bytes(&[]).unwrap().as_slice(), &[]);
        assert_eq!(ByteArray::from_bytes(&[0, 255, 7]).unwrap().as_slice(), &[0, 255, 7]);
        assert!(allocate(isize::MAX as usize).is_null());
    }
}
