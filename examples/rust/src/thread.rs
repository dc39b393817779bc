// SPDX-License-Identifier: MIT
//! The framework's thread object.

use std::mem::size_of;

/// The part of a thread object that the library reads, for `ZERA_TOOLS_POSTTHREADMESSAGE`.
#[repr(C)]
pub struct Thread {
    reserved: [u8; 96],
    thread_id: u32,
}

const _: () = assert!(size_of::<Thread>() == 100, "thread objects carry their identifier behind 96 bytes");

impl Thread {
    /// The thread with this identifier of the platform's.
    pub fn new(thread_id: u32) -> Self {
        Self { reserved: [0; 96], thread_id }
    }

    pub fn id(&self) -> u32 {
        self.thread_id
    }
}
