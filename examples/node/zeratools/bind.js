// SPDX-License-Identifier: MIT
// An export as a function that checks its arguments.
'use strict';
const { argument, resultType } = require('./arguments');
const { callback, runtime } = require('./memory');
const { scope } = require('./objects');

// The universal runtime asks this thread's handler what to do about an invalid parameter, such as a result that does
// not fit, and ends the process where there is none. Only calls of the library have this one.
const pointer = 'uintptr_t';
const setHandler = runtime.func(`${pointer} _set_thread_local_invalid_parameter_handler(${pointer} handler)`);
let invalid = false;
const noteInvalid = callback('void', [pointer, pointer, pointer, 'uint32_t', pointer], () => {
  invalid = true;
});
function handled(name, call) {
  const before = setHandler(noteInvalid);
  invalid = false;
  let answer;
  try {
    answer = call();
  } finally {
    setHandler(before);
  }
  if (invalid) throw new RangeError(`${name}: invalid parameter; the result does not fit, most likely`);
  return answer;
}

// A buffer whose capacity is the next argument has that much room.
function checkRoom(entry, values) {
  entry.arguments.forEach((one, i) => {
    const { name } = entry.arguments[i + 1] ?? {};
    if (!(values[i] instanceof Uint8Array) || !/^(capacity|free|count)$/.test(name)) return;
    const room = Math.floor(values[i].length / (/wchar_t/.test(one.type) ? 2 : 1));
    if (values[i + 1] > room)
      throw new RangeError(`${entry.name}, ${name}: ${values[i + 1]}, and ${one.name} has room for ${room}`);
  });
}

function makeExport(library, entry, symbol) {
  const { name, arguments: list } = entry;
  const takers = list.map(argument);
  const call = library.func(symbol, resultType(entry.result.type), takers.map((one) => one.ffi));
  const givesAddress = resultType(entry.result.type) === pointer;
  const bound = (...values) => {
    if (values.length !== list.length)
      throw new TypeError(
        `${name}: expected ${list.length} arguments (${list.map((one) => one.name).join(', ')}), got ${values.length}`);
    return scope((own) => {
      const taken = values.map((value, i) =>
        value === null && list[i].optional ? takers[i].none : takers[i].take(value, `${name}, ${list[i].name}`, own));
      checkRoom(entry, values);
      const answer = handled(name, () => call(...taken));
      return givesAddress ? answer || null : answer;
    });
  };
  Object.defineProperty(bound, 'name', { value: name });
  return Object.assign(bound, { ordinal: entry.ordinal, raises: entry.raises });
}

module.exports = { makeExport };
