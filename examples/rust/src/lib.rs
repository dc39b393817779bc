// SPDX-License-Identifier: MIT
//! ZERATools for hosts in Rust.
//!
//! [`raw`] has every export, as the package's list of exports declares it, and the objects that some of them take.
//! Above it lies a safe layer for what a host starts with: its settings file ([`SettingsFile`]), the language of its
//! user interface ([`Language`], [`LanguageModule`]), and texts that a casual reader shall not see ([`crypt`]).
//!
//! What the library raises is an exception of the Microsoft C++ ABI. Rust cannot catch it: the process ends, with the
//! code 0xE06D7363. The package's page "Hosts in Rust" tells when.
#![deny(improper_ctypes, improper_ctypes_definitions)]

#[cfg(not(all(windows, target_arch = "x86_64")))]
compile_error!("ZERATools is a library for 64-bit Windows: cargo build --target x86_64-pc-windows-gnu");

mod byte_array;
pub mod crypt;
mod error;
mod language;
mod platform;
pub mod raw;
mod settings;
mod string_manager;
mod string_object;
mod text;
mod thread;

pub use byte_array::ByteArray;
pub use error::Error;
pub use language::{Language, LanguageModule};
pub use platform::by_ordinal;
pub use settings::SettingsFile;
pub use string_manager::buffers_in_use as string_buffers_in_use;
pub use string_object::{AnsiString, StringObject, Unit, WideString};
pub use thread::Thread;

#[cfg(test)]
#[path = "../build/bindings.rs"]
mod bindings;
#[cfg(test)]
#[path = "../build/json.rs"]
mod json;
#[cfg(test)]
mod tests;
