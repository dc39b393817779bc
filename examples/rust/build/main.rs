// SPDX-License-Identifier: MIT
//! Finds the package around this folder, writes the raw bindings from its list of exports, links its import
//! library, and puts the library beside the programs that are built.
//!
//! `ZERATOOLS_PACKAGE` names another package folder.

mod bindings;
mod json;

use std::path::{Path, PathBuf};
use std::{env, fs, process};

fn main() {
    if let Err(message) = run() {
        eprintln!("zeratools: {message}");
        process::exit(1);
    }
}

fn run() -> Result<(), String> {
    println!("cargo:rerun-if-env-changed=ZERATOOLS_PACKAGE");
    let package = match env::var_os("ZERATOOLS_PACKAGE") {
        Some(folder) => PathBuf::from(folder),
        None => folder("CARGO_MANIFEST_DIR")?.join("../.."),
    };
    let list = package.join("share/zeratools/exports.json");
    let library = package.join("bin/ZERATools.dll");
    for file in [&list, &library] {
        if !file.is_file() {
            return Err(format!(
                "{} is missing; outside the unpacked package, set ZERATOOLS_PACKAGE to the package's folder",
                file.display()
            ));
        }
        println!("cargo:rerun-if-changed={}", file.display());
    }

    let out = folder("OUT_DIR")?;
    let text = fs::read_to_string(&list).map_err(|error| format!("{}: {error}", list.display()))?;
    let exports = json::parse(&text).map_err(|error| format!("{}, {error}", list.display()))?;
    let code = bindings::write(&exports).map_err(|error| format!("{}: {error}", list.display()))?;
    fs::write(out.join("exports.rs"), code).map_err(|error| format!("the bindings cannot be written: {error}"))?;

    // libZERATools.dll.a for GNU linkers, ZERATools.lib for the others, both of which know the library's name.
    println!("cargo:rustc-link-search=native={}", package.join("lib").display());
    put_beside_programs(&library, &out)
}

fn folder(variable: &str) -> Result<PathBuf, String> {
    env::var_os(variable).map(PathBuf::from).ok_or(format!("cargo sets no {variable}"))
}

/// Programs find the library beside themselves. They come into the folder of the profile (`debug`), those of
/// tests into its folder `deps`, those of examples into `examples`; `OUT_DIR` is `build/<name>/out` in it.
fn put_beside_programs(library: &Path, out: &Path) -> Result<(), String> {
    let profile = out.ancestors().nth(3).ok_or("OUT_DIR lies in no profile's folder")?;
    for folder in [profile.to_path_buf(), profile.join("deps"), profile.join("examples")] {
        let target = folder.join("ZERATools.dll");
        fs::create_dir_all(&folder)
            .and_then(|()| fs::copy(library, &target))
            .map_err(|error| format!("{}: {error}", target.display()))?;
    }
    Ok(())
}
