// SPDX-License-Identifier: MIT
//! Writes the raw bindings: a function, an ordinal and an entry of the table for each export of the list.

use std::fmt::Write;

use super::json::Value;

/// The Rust type of an argument or a result; an unknown one is an error, never a guess.
fn rust_type(c: &str) -> Option<&'static str> {
    Some(match c {
        "BOOL" | "int" => "i32",
        "int*" => "*mut i32",
        "unsigned int" | "UINT" => "u32",
        "WORD" => "u16",
        "__int64*" => "*mut i64",
        "unsigned __int64" => "u64",
        "unsigned __int64*" => "*mut u64",
        "size_t" | "WPARAM" => "usize",
        "size_t*" => "*mut usize",
        "LPARAM" => "isize",
        "float" => "f32",
        "double" => "f64",
        "char" => "c_char",
        "char*" => "*mut c_char",
        "const char*" => "*const c_char",
        "wchar_t" => "u16",
        "wchar_t*" => "*mut u16",
        "const wchar_t*" => "*const u16",
        "unsigned char*" | "BYTE*" => "*mut u8",
        "const unsigned char*" | "const BYTE*" => "*const u8",
        "void*" => "*mut c_void",
        "HMODULE" => "HMODULE",
        "CStringA&" => "*mut AnsiString",
        "const CStringA&" => "*const AnsiString",
        "CStringW&" => "*mut WideString",
        "const CStringW&" => "*const WideString",
        "CArray<BYTE, const BYTE&>&" => "*mut ByteArray",
        "const CArray<BYTE, const BYTE&>&" => "*const ByteArray",
        "CWinThread*" => "*mut Thread",
        _ => return None,
    })
}

fn text<'a>(object: &'a Value, member: &str) -> Result<&'a str, String> {
    object.get(member).and_then(Value::text).ok_or(format!("no text \"{member}\""))
}

fn list<'a>(object: &'a Value, member: &str) -> Result<&'a [Value], String> {
    object.get(member).and_then(Value::list).ok_or(format!("no list \"{member}\""))
}

fn type_of(object: &Value) -> Result<&'static str, String> {
    let c = text(object, "type")?;
    rust_type(c).ok_or(format!("no type of Rust stands for \"{c}\""))
}

/// `passPhrase` as `pass_phrase`.
fn snake_case(name: &str) -> String {
    let mut snake = String::new();
    for one in name.chars() {
        if one.is_ascii_uppercase() {
            snake.push('_');
        }
        snake.push(one.to_ascii_lowercase());
    }
    snake
}

/// A text of the list as documentation: exports that it names are links, and what would be markup is none. It stays one
/// line, so it never ends the comment that it stands in.
fn markdown(text: &str) -> String {
    let mut code = false;
    let mut result = String::new();
    for (at, word) in text.split_whitespace().enumerate() {
        if at > 0 {
            result.push(' ');
        }
        if let Some(name) = word.strip_prefix('#') {
            let end = name.find(|one: char| !one.is_ascii_alphanumeric() && one != '_').unwrap_or(name.len());
            let _ = write!(result, "[`{}`]{}", &name[..end], &name[end..]);
            continue;
        }
        for one in word.chars() {
            code ^= one == '`';
            if !code && matches!(one, '\\' | '[' | ']' | '<' | '>' | '*') {
                result.push('\\');
            }
            result.push(one);
        }
    }
    result
}

fn documentation(code: &mut String, line: &str) {
    let _ = writeln!(code, "    ///{}{line}", if line.is_empty() { "" } else { " " });
}

fn declaration(code: &mut String, name: &str, export: &Value, raises: &[&str]) -> Result<(), String> {
    documentation(code, &markdown(text(export, "summary")?));
    let mut arguments = String::new();
    for argument in list(export, "arguments")? {
        let (own, c) = (text(argument, "name")?, snake_case(text(argument, "name")?));
        let kind = type_of(argument).map_err(|error| format!("argument {own}: {error}"))?;
        let unit = argument.get("unit").and_then(Value::text).map_or(String::new(), |unit| format!(", in {unit}"));
        documentation(code, "");
        documentation(
            code,
            &format!("* `{c}` ({}{unit}): {}", text(argument, "direction")?, markdown(text(argument, "text")?)),
        );
        let _ = write!(arguments, "{}{c}: {kind}", if arguments.is_empty() { "" } else { ", " });
    }
    let result = export.get("result").ok_or("no result")?;
    let arrow = match text(result, "type")? {
        "void" => String::new(),
        _ => format!(" -> {}", type_of(result).map_err(|error| format!("result: {error}"))?),
    };
    if !arrow.is_empty() {
        documentation(code, "");
        documentation(code, &format!("Result: {}", markdown(text(result, "text")?)));
    }
    if !raises.is_empty() {
        documentation(code, "");
        documentation(code, &format!("Raises: {}", raises.join(", ")));
    }
    let _ = writeln!(code, "    pub fn {name}({arguments}){arrow};");
    Ok(())
}

/// The bindings as Rust code.
pub fn write(exports: &Value) -> Result<String, String> {
    let mut functions = String::new();
    let mut ordinals = String::new();
    let mut table = String::new();
    for export in list(exports, "exports")? {
        let name = text(export, "name")?;
        if name.is_empty() || !name.chars().all(|one| one.is_ascii_alphanumeric() || one == '_') {
            return Err(format!("\"{name}\" is no name"));
        }
        let ordinal = export.get("ordinal").and_then(Value::ordinal).ok_or(format!("{name}: no ordinal"))?;
        let partner = export.get("partner").and_then(Value::text);
        let raises: Option<Vec<&str>> = list(export, "raises")?.iter().map(Value::text).collect();
        let raises = raises.ok_or(format!("{name}: \"raises\" holds no texts"))?;
        declaration(&mut functions, name, export, &raises).map_err(|error| format!("{name}: {error}"))?;
        let _ = writeln!(ordinals, "    pub const {name}: u16 = {ordinal};");
        let _ = writeln!(
            table,
            "    Export {{ name: {name:?}, ordinal: {ordinal}, partner: {partner:?}, raises: &{raises:?} }},"
        );
    }
    Ok(format!(
        "// Written by build/main.rs from the list of exports, version {version}.\n\
         #[link(name = \"ZERATools\")]\nextern \"C\" {{\n{functions}}}\n\n\
         /// The exports' numbers, which never change.\npub mod ordinal {{\n{ordinals}}}\n\n\
         /// All exports.\npub const EXPORTS: &[Export] = &[\n{table}];\n",
        version = text(exports, "version")?
    ))
}

#[cfg(test)]
mod tests {
    use super::super::json;
    use super::*;

    fn of(member: &str, value: &str) -> Result<String, String> {
        let mut export = "{\"name\": \"SOME_NAME\", \"ordinal\": 7, \"partner\": null, \"summary\": \"Does\\nso.\", \
            \"result\": {\"type\": \"int\", \"text\": \"1\"}, \"raises\": [\"CFileException\"], \"arguments\": [\
            {\"name\": \"passPhrase\", \"type\": \"const CStringW&\", \"direction\": \"in\", \"unit\": \"characters\", \"text\": \"words\"},\
            {\"name\": \"room\", \"type\": \"size_t*\", \"direction\": \"out\", \"text\": \"left\"}]}"
            .to_string();
        if !member.is_empty() {
            let at = export.find(&format!("\"{member}\": ")).unwrap() + member.len() + 4;
            let end = at + export[at..].find(',').unwrap();
            export.replace_range(at..end, value);
        }
        write(&json::parse(&format!("{{\"version\": \"1.2.3\", \"exports\": [{export}]}}")).unwrap())
    }

    #[test]
    fn an_export_becomes_function_ordinal_and_entry() {
        let code = of("", "").unwrap();
        assert!(code.contains("    /// Does so.\n    ///\n    /// * `pass_phrase`"), "{code}");
        assert!(code.contains("    ///\n    /// Raises: CFileException\n    pub fn SOME_NAME("), "{code}");
        assert!(code.contains("    /// * `pass_phrase` (in, in characters): words\n"), "{code}");
        assert!(
            code.contains("    pub fn SOME_NAME(pass_phrase: *const WideString, room: *mut usize) -> i32;\n"),
            "{code}"
        );
        assert!(code.contains("    pub const SOME_NAME: u16 = 7;\n"), "{code}");
        assert!(
            code.contains("Export { name: \"SOME_NAME\", ordinal: 7, partner: None, raises: &[\"CFileException\"] },"),
            "{code}"
        );
    }

    #[test]
    fn texts_become_documentation() {
        assert_eq!(
            markdown("As #ZERA_TOOLS_X, with\n  `a*[b]` or \"[section]\"."),
            "As [`ZERA_TOOLS_X`], with `a*[b]` or \"\\[section\\]\"."
        );
        assert_eq!(markdown(r"C:\data <b> *"), r"C:\\data \<b\> \*");
    }

    #[test]
    fn what_cannot_be_bound_is_an_error_with_its_name() {
        assert_eq!(of("ordinal", "70000").unwrap_err(), "SOME_NAME: no ordinal");
        assert_eq!(of("name", "\"fn () {}\"").unwrap_err(), "\"fn () {}\" is no name");
        assert_eq!(of("type", "\"long\"").unwrap_err(), "SOME_NAME: result: no type of Rust stands for \"long\"");
        assert_eq!(of("summary", "1").unwrap_err(), "SOME_NAME: no text \"summary\"");
        assert_eq!(of("raises", "1").unwrap_err(), "no list \"raises\"");
    }
}
