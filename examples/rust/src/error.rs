// SPDX-License-Identifier: MIT

use std::fmt;

/// Why a call of the safe layer failed.
#[derive(Debug, Clone, PartialEq, Eq)]
#[non_exhaustive]
pub enum Error {
    /// A text that goes to the library has a NUL inside, where it would end; `at` counts UTF-16 units from 0.
    InteriorNul { at: usize },
    /// A text or a run of bytes is longer than the library takes; both count its units.
    TooLong { length: usize, limit: usize },
    /// A character beyond U+00FF, of which the library would encrypt the low byte alone.
    BeyondByte { character: char },
    /// A text that the library gave is no valid UTF-16.
    NotUnicode,
    /// Memory for an object is exhausted.
    OutOfMemory,
    /// The export answered that it failed.
    Answer { export: &'static str, answer: i32 },
}

impl fmt::Display for Error {
    fn fmt(&self, to: &mut fmt::Formatter<'_>) -> fmt::Result {
        match self {
            Error::InteriorNul { at } => write!(to, "the text has a NUL at {at}"),
            Error::TooLong { length, limit } => write!(to, "the length is {length}, the limit {limit}"),
            Error::BeyondByte { character } => write!(to, "'{character}' is beyond U+00FF; encrypt its bytes instead"),
            Error::NotUnicode => write!(to, "the library's text is no valid UTF-16"),
            Error::OutOfMemory => write!(to, "memory is exhausted"),
            Error::Answer { export, answer } => write!(to, "{export} answers {answer}"),
        }
    }
}

impl std::error::Error for Error {}
