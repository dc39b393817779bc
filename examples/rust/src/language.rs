// SPDX-License-Identifier: MIT

use std::ptr::null_mut;

use crate::platform::FreeLibrary;
use crate::raw::{HMODULE, ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL};

/// The languages of the user interface, by their stored numbers.
#[derive(Debug, Clone, Copy, PartialEq, Eq, Hash)]
#[repr(i32)]
pub enum Language {
    German = 0,
    English = 1,
    French = 2,
    Dutch = 3,
    Italian = 4,
    Spanish = 5,
    Portuguese = 6,
    Swedish = 7,
    Norwegian = 8,
    Chinese = 9,
    Korean = 10,
    Japanese = 11,
    Bulgarian = 12,
}

impl Language {
    pub const ALL: [Language; 13] = [
        Language::German,
        Language::English,
        Language::French,
        Language::Dutch,
        Language::Italian,
        Language::Spanish,
        Language::Portuguese,
        Language::Swedish,
        Language::Norwegian,
        Language::Chinese,
        Language::Korean,
        Language::Japanese,
        Language::Bulgarian,
    ];

    pub fn number(self) -> i32 {
        self as i32
    }

    pub fn from_number(number: i32) -> Option<Language> {
        Self::ALL.into_iter().find(|language| language.number() == number)
    }
}

/// A loaded language module, given back when it is dropped.
#[derive(Debug)]
pub struct LanguageModule {
    handle: HMODULE,
}

impl LanguageModule {
    /// Loads the module that lies beside the process's executable, or the English one; nothing if there is neither, and
    /// for German, which is built into the applications. As `ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL`.
    pub fn load(language: Language) -> Option<LanguageModule> {
        let handle = unsafe { ZERA_TOOLS_APPLICATION_LOAD_LANGUAGE_DLL(null_mut(), language.number() as u32) };
        if handle.is_null() {
            return None;
        }
        Some(LanguageModule { handle })
    }

    /// For the platform's functions that take texts from a module; valid as long as this object.
    pub fn handle(&self) -> HMODULE {
        self.handle
    }
}

impl Drop for LanguageModule {
    fn drop(&mut self) {
        unsafe { FreeLibrary(self.handle) };
    }
}

#[cfg(test)]
mod tests {
    use super::*;
    use crate::platform::module_handle;
    use crate::tests::Folder;
    use crate::SettingsFile;

    #[test]
    fn languages_are_saved_by_their_codes() {
        let folder = Folder::new("languages");
        let path = folder.file("a.ini");
        let file = SettingsFile::at(&path).unwrap();
        assert_eq!(file.language(), Ok(Language::German));
        let codes = ["DEU", "ENG", "FRA", "NLD", "ITA", "ESP", "PTG", "SVE", "NOR", "CHS", "KOR", "JPN", "BGR"];
        for (language, code) in Language::ALL.into_iter().zip(codes) {
            file.save_language(language).unwrap();
            assert_eq!(file.language(), Ok(language));
            let text = String::from_utf8_lossy(&std::fs::read(&path).unwrap()).to_string();
            assert!(text.contains(&format!("[Vorgaben]\r\nLanguage={code}\r\n")), "{text}");
        }
        assert_eq!(Language::from_number(13), None);
        assert_eq!(Language::from_number(-1), None);
    }

    #[test]
    fn a_language_module_is_loaded_and_given_back() {
        let program = std::env::current_exe().unwrap();
        let stem = program.file_stem().unwrap().to_string_lossy().to_string();
        // Any library will do.
        let name = format!("{stem}_FRA.dll");
        let module = program.with_file_name(&name);
        std::fs::copy(program.with_file_name("ZERATools.dll"), &module).unwrap();
        assert!(LanguageModule::load(Language::German).is_none());
        assert!(LanguageModule::load(Language::English).is_none());
        {
            let loaded = LanguageModule::load(Language::French).unwrap();
            assert_eq!(loaded.handle(), module_handle(&name));
        }
        assert!(module_handle(&name).is_null());
        std::fs::remove_file(&module).unwrap();
    }
}
