// SPDX-License-Identifier: MIT
//! Reads JSON (RFC 8259). Enough for the list of exports, and strict: what is no JSON is an error that names the
//! line.

use std::iter::Peekable;
use std::str::Chars;

#[derive(Debug, Clone, PartialEq)]
pub enum Value {
    Null,
    Bool(bool),
    Number(f64),
    Text(String),
    List(Vec<Value>),
    Object(Vec<(String, Value)>),
}

impl Value {
    /// The member of an object; nothing for other values.
    pub fn get(&self, name: &str) -> Option<&Value> {
        match self {
            Value::Object(members) => members.iter().find(|(key, _)| key == name).map(|(_, value)| value),
            _ => None,
        }
    }

    pub fn text(&self) -> Option<&str> {
        match self {
            Value::Text(text) => Some(text),
            _ => None,
        }
    }

    pub fn list(&self) -> Option<&[Value]> {
        match self {
            Value::List(values) => Some(values),
            _ => None,
        }
    }

    /// A whole number from 0 to 65535, as ordinals are.
    pub fn ordinal(&self) -> Option<u16> {
        match self {
            Value::Number(number) if number.fract() == 0.0 && (0.0..=65535.0).contains(number) => Some(*number as u16),
            _ => None,
        }
    }
}

/// Reads one value and nothing behind it.
pub fn parse(text: &str) -> Result<Value, String> {
    let mut reader = Reader { rest: text.chars().peekable(), line: 1, depth: 0 };
    let value = reader.value()?;
    reader.skip_blanks();
    match reader.rest.peek() {
        None => Ok(value),
        Some(_) => reader.fail("there is more behind the value"),
    }
}

struct Reader<'a> {
    rest: Peekable<Chars<'a>>,
    line: usize,
    depth: usize,
}

impl Reader<'_> {
    fn fail<T>(&self, message: &str) -> Result<T, String> {
        Err(format!("line {}: {message}", self.line))
    }

    fn skip_blanks(&mut self) {
        while let Some(blank) = self.rest.next_if(|one| matches!(one, ' ' | '\t' | '\r' | '\n')) {
            if blank == '\n' {
                self.line += 1;
            }
        }
    }

    fn expect(&mut self, wanted: char) -> Result<(), String> {
        match self.rest.next_if_eq(&wanted) {
            Some(_) => Ok(()),
            None => self.fail(&format!("'{wanted}' is missing")),
        }
    }

    fn word(&mut self, word: &str, value: Value) -> Result<Value, String> {
        for one in word.chars() {
            self.expect(one)?;
        }
        Ok(value)
    }

    fn value(&mut self) -> Result<Value, String> {
        self.skip_blanks();
        match self.rest.peek().copied() {
            Some('{') => self.nested(Reader::object),
            Some('[') => self.nested(Reader::list),
            Some('"') => Ok(Value::Text(self.string()?)),
            Some('t') => self.word("true", Value::Bool(true)),
            Some('f') => self.word("false", Value::Bool(false)),
            Some('n') => self.word("null", Value::Null),
            Some('-' | '0'..='9') => self.number(),
            Some(other) => self.fail(&format!("'{other}' begins no value")),
            None => self.fail("a value is missing"),
        }
    }

    /// Lists and objects, of which not so many may stand in each other that the stack would not do.
    fn nested(&mut self, read: fn(&mut Self) -> Result<Value, String>) -> Result<Value, String> {
        self.depth += 1;
        if self.depth > 100 {
            return self.fail("nested too deeply");
        }
        let value = read(self);
        self.depth -= 1;
        value
    }

    fn list(&mut self) -> Result<Value, String> {
        let mut values = Vec::new();
        self.elements('[', ']', |reader| {
            values.push(reader.value()?);
            Ok(())
        })?;
        Ok(Value::List(values))
    }

    fn object(&mut self) -> Result<Value, String> {
        let mut members: Vec<(String, Value)> = Vec::new();
        self.elements('{', '}', |reader| {
            reader.skip_blanks();
            let name = reader.string()?;
            if members.iter().any(|(key, _)| *key == name) {
                return reader.fail(&format!("\"{name}\" stands there twice"));
            }
            reader.skip_blanks();
            reader.expect(':')?;
            members.push((name, reader.value()?));
            Ok(())
        })?;
        Ok(Value::Object(members))
    }

    /// What stands between two brackets, parted by commas.
    fn elements<F>(&mut self, open: char, close: char, mut element: F) -> Result<(), String>
    where
        F: FnMut(&mut Self) -> Result<(), String>,
    {
        self.expect(open)?;
        self.skip_blanks();
        if self.rest.next_if_eq(&close).is_some() {
            return Ok(());
        }
        loop {
            element(self)?;
            self.skip_blanks();
            if self.rest.next_if_eq(&',').is_none() {
                return self.expect(close);
            }
        }
    }

    fn string(&mut self) -> Result<String, String> {
        self.expect('"')?;
        let mut text = String::new();
        loop {
            match self.rest.next() {
                Some('"') => return Ok(text),
                Some('\\') => text.push(self.escape()?),
                Some(one) if one < ' ' => return self.fail("a control character in a text"),
                Some(one) => text.push(one),
                None => return self.fail("a text has no end"),
            }
        }
    }

    fn escape(&mut self) -> Result<char, String> {
        match self.rest.next() {
            Some(one @ ('"' | '\\' | '/')) => Ok(one),
            Some('b') => Ok('\u{8}'),
            Some('f') => Ok('\u{c}'),
            Some('n') => Ok('\n'),
            Some('r') => Ok('\r'),
            Some('t') => Ok('\t'),
            Some('u') => self.unicode(),
            _ => self.fail("no such escape"),
        }
    }

    /// A character as one UTF-16 unit, or as two.
    fn unicode(&mut self) -> Result<char, String> {
        let first = self.unit()?;
        let mut units = vec![first];
        if (0xD800..0xDC00).contains(&first) {
            self.expect('\\')?;
            self.expect('u')?;
            units.push(self.unit()?);
        }
        match char::decode_utf16(units).next() {
            Some(Ok(one)) => Ok(one),
            _ => self.fail("half a character"),
        }
    }

    fn unit(&mut self) -> Result<u16, String> {
        let mut unit = 0;
        for _ in 0..4 {
            match self.rest.next().and_then(|digit| digit.to_digit(16)) {
                Some(digit) => unit = unit * 16 + digit as u16,
                None => return self.fail("four hexadecimal digits are missing"),
            }
        }
        Ok(unit)
    }

    fn number(&mut self) -> Result<Value, String> {
        let mut text = String::new();
        text.extend(self.rest.next_if_eq(&'-'));
        match self.rest.next_if_eq(&'0') {
            Some(zero) => text.push(zero),
            None => self.digits(&mut text)?,
        }
        if let Some(point) = self.rest.next_if_eq(&'.') {
            text.push(point);
            self.digits(&mut text)?;
        }
        if let Some(e) = self.rest.next_if(|one| matches!(one, 'e' | 'E')) {
            text.push(e);
            text.extend(self.rest.next_if(|one| matches!(one, '+' | '-')));
            self.digits(&mut text)?;
        }
        text.parse().map(Value::Number).or_else(|_| self.fail("no number"))
    }

    fn digits(&mut self, text: &mut String) -> Result<(), String> {
        let before = text.len();
        while let Some(digit) = self.rest.next_if(char::is_ascii_digit) {
            text.push(digit);
        }
        if text.len() == before {
            return self.fail("a digit is missing");
        }
        Ok(())
    }
}

#[cfg(test)]
mod tests {
    use super::*;

    fn text(json: &str) -> String {
        parse(json).unwrap().text().unwrap().to_string()
    }

    #[test]
    fn values() {
        assert_eq!(parse(" null "), Ok(Value::Null));
        assert_eq!(parse("[true, false]"), Ok(Value::List(vec![Value::Bool(true), Value::Bool(false)])));
        assert_eq!(parse("[]"), Ok(Value::List(vec![])));
        assert_eq!(parse("{}"), Ok(Value::Object(vec![])));
        for (json, number) in
            [("0", 0.0), ("-0.5", -0.5), ("12e2", 1200.0), ("1.5E-1", 0.15), ("9007199254740993", 9007199254740992.0)]
        {
            assert_eq!(parse(json), Ok(Value::Number(number)), "{json}");
        }
        let object = parse("{\"a\": [1, {\"b\": \"c\"}], \"ordinal\": 1091}").unwrap();
        assert_eq!(object.get("a").unwrap().list().unwrap()[1].get("b").unwrap().text(), Some("c"));
        assert_eq!(object.get("ordinal").unwrap().ordinal(), Some(1091));
        assert_eq!(object.get("none"), None);
        for no_ordinal in ["-1", "1.5", "65536", "\"1\""] {
            assert_eq!(parse(no_ordinal).unwrap().ordinal(), None, "{no_ordinal}");
        }
    }

    #[test]
    fn escapes() {
        assert_eq!(text(r#""\"\\\/\b\f\n\r\t""#), "\"\\/\u{8}\u{c}\n\r\t");
        assert_eq!(text(r#""\u0141\u00f3d\u017A""#), "Łódź");
        assert_eq!(text(r#""\ud83d\ude00 Λ""#), "😀 Λ");
    }

    #[test]
    fn errors_name_the_line() {
        for (json, message) in [
            ("", "line 1: a value is missing"),
            ("[1,\n 2,\n]", "line 3: ']' begins no value"),
            ("{\"a\" 1}", "line 1: ':' is missing"),
            ("{\"a\": 1, \"a\": 2}", "line 1: \"a\" stands there twice"),
            ("{a: 1}", "line 1: '\"' is missing"),
            ("[1", "line 1: ']' is missing"),
            ("\n\"a", "line 2: a text has no end"),
            ("\"a\n\"", "line 1: a control character in a text"),
            (r#""\x""#, "line 1: no such escape"),
            (r#""\u12g4""#, "line 1: four hexadecimal digits are missing"),
            (r#""\ud83d\u0041""#, "line 1: half a character"),
            (r#""\udc00""#, "line 1: half a character"),
            ("01", "line 1: there is more behind the value"),
            ("-", "line 1: a digit is missing"),
            ("1.", "line 1: a digit is missing"),
            ("1e", "line 1: a digit is missing"),
            ("tru", "line 1: 'e' is missing"),
            ("NaN", "line 1: 'N' begins no value"),
            ("1 2", "line 1: there is more behind the value"),
        ] {
            assert_eq!(parse(json), Err(message.to_string()), "{json:?}");
        }
        assert_eq!(parse(&"[".repeat(100_000)), Err("line 1: nested too deeply".to_string()));
        assert!(parse(&("[".repeat(100) + &"]".repeat(100))).is_ok());
    }
}
