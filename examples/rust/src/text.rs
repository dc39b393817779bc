// SPDX-License-Identifier: MIT
//! Texts on their way to the library: UTF-16, with a zero at the end and none before.

use crate::Error;

pub fn terminated(units: impl Iterator<Item = u16>) -> Result<Vec<u16>, Error> {
    let mut text: Vec<u16> = units.collect();
    match text.iter().position(|unit| *unit == 0) {
        Some(at) => Err(Error::InteriorNul { at }),
        None => {
            text.push(0);
            Ok(text)
        }
    }
}

/// What stands before the first zero.
pub fn until_nul(buffer: &[u16]) -> &[u16] {
    let length = buffer.iter().position(|unit| *unit == 0).unwrap_or(buffer.len());
    &buffer[..length]
}
