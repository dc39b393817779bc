// SPDX-License-Identifier: MIT

use std::ffi::OsString;
use std::ops::RangeInclusive;
use std::os::windows::ffi::{OsStrExt, OsStringExt};
use std::path::{Path, PathBuf};
use std::ptr::null_mut;

use crate::raw::*;
use crate::text::{terminated, until_nul};
use crate::{Error, Language};

/// An application's settings file. Nothing is opened or kept: every call goes to the file. The library does not tell
/// whether a value could be written.
#[derive(Debug, Clone, PartialEq, Eq)]
pub struct SettingsFile {
    /// With its terminator.
    path: Vec<u16>,
    exists: bool,
}

/// Paths as the platform takes them, without the terminator.
const PATH_LIMIT: usize = 259;
/// No value of a settings file is longer on this platform.
const VALUE_LIMIT: usize = 65_535;

impl SettingsFile {
    /// Finds the settings file of the process's executable: beside it, if files can be made there, else in the user's
    /// data folder. As `ZERA_TOOLS_APPLICATION_GET_INIFILE_UC`.
    pub fn find() -> Result<Self, Error> {
        let mut path = WideString::new();
        let answer = unsafe { ZERA_TOOLS_APPLICATION_GET_INIFILE_UC(null_mut(), &mut path) };
        if path.units().is_empty() {
            return Err(Error::Answer { export: "ZERA_TOOLS_APPLICATION_GET_INIFILE_UC", answer });
        }
        Ok(Self { path: terminated(path.units().iter().copied())?, exists: answer != 0 })
    }

    /// A settings file by its path. Without a folder, the platform looks in the Windows folder.
    pub fn at(path: impl AsRef<Path>) -> Result<Self, Error> {
        let exists = path.as_ref().exists();
        let path = terminated(path.as_ref().as_os_str().encode_wide())?;
        match path.len() - 1 {
            length if length > PATH_LIMIT => Err(Error::TooLong { length, limit: PATH_LIMIT }),
            _ => Ok(Self { path, exists }),
        }
    }

    pub fn path(&self) -> PathBuf {
        OsString::from_wide(until_nul(&self.path)).into()
    }

    /// Whether there was such a file when it was looked for.
    pub fn existed(&self) -> bool {
        self.exists
    }

    /// Makes the file's folders if they are missing, and sees whether files can be made there. As
    /// `ZERA_TOOLS_FILE_CHECK_WRITE_UC`.
    pub fn make_folders(&self) -> Result<(), Error> {
        success("ZERA_TOOLS_FILE_CHECK_WRITE_UC", unsafe { ZERA_TOOLS_FILE_CHECK_WRITE_UC(self.path.as_ptr()) })
    }

    /// The language that the file names; German without one. As `ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC`.
    pub fn language(&self) -> Result<Language, Error> {
        let answer = unsafe { ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC(self.path.as_ptr()) };
        let export = "ZERA_TOOLS_APPLICATION_GET_LANGUAGE_ENUM_UC";
        Language::from_number(answer).ok_or(Error::Answer { export, answer })
    }

    /// Saves the language. As `ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC`.
    pub fn save_language(&self, language: Language) -> Result<(), Error> {
        success("ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC", unsafe {
            ZERA_TOOLS_APPLICATION_SAVE_LANGUAGE_UC(language.number(), self.path.as_ptr())
        })
    }

    /// A number, brought between the limits; the default as it is if there is no value. As `ZERA_TOOLS_READ_INT_UC`.
    pub fn read_int(&self, section: &str, key: &str, default: i32, limits: RangeInclusive<i32>) -> Result<i32, Error> {
        let (section, key) = (terminated(section.encode_utf16())?, terminated(key.encode_utf16())?);
        let (least, most) = limits.into_inner();
        Ok(unsafe { ZERA_TOOLS_READ_INT_UC(section.as_ptr(), key.as_ptr(), self.path.as_ptr(), default, least, most) })
    }

    /// Writes a number. As `ZERA_TOOLS_WRITE_INT_UC`.
    pub fn write_int(&self, section: &str, key: &str, value: i32) -> Result<(), Error> {
        let (section, key) = (terminated(section.encode_utf16())?, terminated(key.encode_utf16())?);
        success("ZERA_TOOLS_WRITE_INT_UC", unsafe {
            ZERA_TOOLS_WRITE_INT_UC(section.as_ptr(), key.as_ptr(), self.path.as_ptr(), value)
        })
    }

    /// A text whole, or the default if there is no value. As `ZERA_TOOLS_READ_STRING_UC`.
    pub fn read_text(&self, section: &str, key: &str, default: &str) -> Result<String, Error> {
        let (section, key) = (terminated(section.encode_utf16())?, terminated(key.encode_utf16())?);
        let default = terminated(default.encode_utf16())?;
        if default.len() > VALUE_LIMIT {
            return Err(Error::TooLong { length: default.len() - 1, limit: VALUE_LIMIT - 1 });
        }
        let read = |room: usize| {
            let mut buffer = vec![0; room];
            unsafe {
                ZERA_TOOLS_READ_STRING_UC(
                    section.as_ptr(),
                    key.as_ptr(),
                    self.path.as_ptr(),
                    default.as_ptr(),
                    buffer.as_mut_ptr(),
                    room,
                )
            };
            until_nul(&buffer).to_vec()
        };
        // A value without enough room is cut or not given at all; then there is as much as any value needs.
        let room = default.len().max(1024);
        let mut text = read(room);
        if text.is_empty() || text.len() + 2 >= room {
            text = read(VALUE_LIMIT + 1);
        }
        String::from_utf16(&text).map_err(|_| Error::NotUnicode)
    }

    /// Writes a text. As `ZERA_TOOLS_WRITE_STRING_UC`.
    pub fn write_text(&self, section: &str, key: &str, value: &str) -> Result<(), Error> {
        let (section, key) = (terminated(section.encode_utf16())?, terminated(key.encode_utf16())?);
        let value = terminated(value.encode_utf16())?;
        success("ZERA_TOOLS_WRITE_STRING_UC", unsafe {
            ZERA_TOOLS_WRITE_STRING_UC(section.as_ptr(), key.as_ptr(), self.path.as_ptr(), value.as_ptr())
        })
    }
}

fn success(export: &'static str, answer: i32) -> Result<(), Error> {
    match answer {
        0 => Err(Error::Answer { export, answer }),
        _ => Ok(()),
    }
}

#[cfg(test)]
mod tests {
    use super::*;
    use crate::tests::{Alone, Folder};

    #[test]
    fn the_settings_file_is_found_and_its_folders_made() {
        let _alone = Alone::new();
        let program = std::env::current_exe().unwrap();
        let beside = program.with_extension("ini");
        let _ = std::fs::remove_file(&beside);
        // Not there yet: it will be in the user's data folder, in one named as the program's.
        let found = SettingsFile::find().unwrap();
        let folder = found.path().parent().unwrap().to_path_buf();
        assert_eq!(folder.file_name(), program.parent().unwrap().file_name());
        assert_eq!(found.path().file_name(), beside.file_name());
        assert_eq!(found.make_folders(), Ok(()));
        assert!(folder.is_dir());
        std::fs::write(&beside, "").unwrap();
        let found = SettingsFile::find().unwrap();
        assert!(found.existed());
        assert_eq!(found.path().to_string_lossy().to_lowercase(), beside.to_string_lossy().to_lowercase());
        std::fs::remove_file(&beside).unwrap();
        // Only if there is nothing in it.
        let _ = std::fs::remove_dir(&folder);
    }

    #[test]
    fn values_come_back() {
        let folder = Folder::new("values");
        let file = SettingsFile::at(folder.file("härd.ini")).unwrap();
        assert!(!file.existed());
        assert_eq!(file.read_int("Program", "Starts", -7, 0..=9), Ok(-7));
        file.write_int("Program", "Starts", 12).unwrap();
        assert_eq!(file.read_int("Program", "Starts", 1, 0..=100), Ok(12));
        assert_eq!(file.read_int("Program", "Starts", 1, 0..=9), Ok(9));

        assert_eq!(file.read_text("User", "Name", "nobody"), Ok("nobody".to_string()));
        for text in
            ["plain", "Λάμπρος 😀", "", &"x".repeat(1022), &"x".repeat(1023), &"Ł".repeat(5000), &"y".repeat(65_000)]
        {
            file.write_text("User", "Name", text).unwrap();
            assert_eq!(file.read_text("User", "Name", "").as_deref(), Ok(text), "{} characters", text.len());
        }
        assert_eq!(file.read_text("User", "None", &"d".repeat(3000)), Ok("d".repeat(3000)));
        assert!(SettingsFile::at(file.path()).unwrap().existed());
    }

    #[test]
    fn mistakes_are_clear() {
        let folder = Folder::new("mistakes");
        let file = SettingsFile::at(folder.file("a.ini")).unwrap();
        let nul = Err(Error::InteriorNul { at: 2 });
        assert_eq!(file.write_text("a\u{10000}\0", "k", "v"), Err(Error::InteriorNul { at: 3 }));
        assert_eq!(file.write_text("s", "ab\0c", "v"), nul);
        assert_eq!(file.write_text("s", "k", "ab\0"), nul);
        assert_eq!(file.write_int("ab\0", "k", 1), nul);
        assert_eq!(file.read_int("s", "ab\0", 1, 0..=1), Err(Error::InteriorNul { at: 2 }));
        assert_eq!(file.read_text("s", "k", "ab\0"), Err(Error::InteriorNul { at: 2 }));
        assert_eq!(SettingsFile::at("a\0"), Err(Error::InteriorNul { at: 1 }));
        assert!(SettingsFile::at("C:\\".to_string() + &"p".repeat(256)).is_ok());
        let too_long = SettingsFile::at("C:\\".to_string() + &"p".repeat(257));
        assert_eq!(too_long, Err(Error::TooLong { length: 260, limit: 259 }));
        let default = "d".repeat(VALUE_LIMIT);
        assert_eq!(file.read_text("s", "k", &default), Err(Error::TooLong { length: 65_535, limit: 65_534 }));
        let nowhere = SettingsFile::at("C:\\a|b\\c.ini").unwrap();
        let answer = Error::Answer { export: "ZERA_TOOLS_FILE_CHECK_WRITE_UC", answer: 0 };
        assert_eq!(nowhere.make_folders(), Err(answer));
    }
}
