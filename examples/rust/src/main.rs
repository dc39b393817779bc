// SPDX-License-Identifier: MIT
//! A host in Rust: it finds its settings file, reads and saves its language, counts its starts, encrypts a text, and
//! binds one export by ordinal.

use std::mem::transmute;
use std::process::ExitCode;

use zeratools::{by_ordinal, crypt, raw, string_buffers_in_use, Error, Language, SettingsFile};

fn main() -> ExitCode {
    if let Err(error) = run() {
        eprintln!("{error}");
        return ExitCode::FAILURE;
    }
    println!("buffers left: {}", string_buffers_in_use());
    ExitCode::SUCCESS
}

fn run() -> Result<(), Error> {
    // On the very first start there is no file yet; the path is the one in the user's data folder then.
    let settings = SettingsFile::find()?;
    let path = settings.path();
    let name = path.file_name().unwrap_or_default().to_string_lossy();
    println!("settings file: {name}, {}", if settings.existed() { "found" } else { "new" });
    settings.make_folders()?;

    // German, the default, at the first start; Italian from the next one on.
    println!("language: {}", settings.language()?.number());
    settings.save_language(Language::Italian)?;

    // A number with its default and its limits.
    let starts = settings.read_int("Program", "Starts", 0, 0..=1_000_000)? + 1;
    settings.write_int("Program", "Starts", starts)?;
    println!("start number {starts}");

    // Text of any language: what the file's code page cannot express is kept beside it as UTF-8.
    settings.write_text("User", "Name", "Λάμπρος")?;
    let kept = settings.read_text("User", "Name", "")? == "Λάμπρος";
    println!("name kept: {}", if kept { "yes" } else { "no" });

    // Printable cipher text, for a settings file. It hides a text from a casual reader, no more.
    let cipher = crypt::encrypt_text("pass phrase", "licence 4711")?;
    settings.write_text("Licence", "Text", &cipher)?;
    println!("stored: {cipher}");
    println!("read:   {}", crypt::decrypt_text("pass phrase", &cipher)?);

    // The same export by its number, as hosts bind that load the library when they need it.
    type RoundDouble = unsafe extern "C" fn(f64, i32) -> f64;
    let round_double: Option<RoundDouble> = unsafe { transmute(by_ordinal(raw::ordinal::ZERA_TOOLS_ROUND_DOUBLE)) };
    if let Some(round_double) = round_double {
        println!("2.345 in two decimals: {:.2}", unsafe { round_double(2.345, 2) });
    }
    Ok(())
}
