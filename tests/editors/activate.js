// Activates the extension in what of VS Code it uses, opens a script, and prints the findings.
//
//   node activate.js EXTENSION LIBRARIES SETTINGS SCRIPT
//
// LIBRARIES is an extension that has the packages of npm.
"use strict";
const fs = require("fs");
const path = require("path");
const url = require("url");
const Module = require("module");

const [extension, libraries, chosen, script] = process.argv.slice(2).map((name) => path.resolve(name));

const rpc = Module.createRequire(path.join(libraries, "package.json"))("vscode-jsonrpc/node");

// Whatever else the client asks for is there, and does nothing.
function nothing() {
  return new Proxy(class {}, {
    get: (target, name) => {
      if (name === "then" || name === Symbol.iterator) return undefined;
      if (name === Symbol.toPrimitive) return () => "";
      if (!(name in target)) target[name] = nothing();
      return target[name];
    },
    apply: () => nothing(),
  });
}
function withNothingElse(known) {
  return new Proxy(known, {
    get: (target, name) => {
      if (name !== "then" && !(name in target)) target[name] = nothing();
      return target[name];
    },
  });
}

class Position {
  constructor(line, character) { Object.assign(this, { line, character }); }
}
class Range {
  constructor(a, b, c, d) {
    this.start = a instanceof Position ? a : new Position(a, b);
    this.end = a instanceof Position ? b : new Position(c, d);
  }
}
class Uri {
  constructor(text) { Object.assign(this, { scheme: "file", fsPath: url.fileURLToPath(text), text }); }
  toString() { return this.text; }
  static parse(text) { return new Uri(text); }
  static file(name) { return new Uri(url.pathToFileURL(name).href); }
}
class Diagnostic {
  constructor(range, message, severity) { Object.assign(this, { range, message, severity }); }
}
class Disposable {
  constructor(dispose) { this.dispose = dispose; }
  static from(...all) { return new Disposable(() => all.forEach((each) => each.dispose())); }
}
const event = () => ({ dispose() {} });

const document = {
  uri: Uri.file(script), languageId: "rux", version: 1, isClosed: false, fileName: script,
  getText: () => fs.readFileSync(script, "utf8"),
};
const known = require(path.join(extension, "package.json")).contributes.configuration.properties;
const settings = JSON.parse(fs.readFileSync(chosen, "utf8"));
const setting = (name) => settings[name] ?? known[name].default;

function show(findings) {
  for (const { range, severity, message } of findings) {
    const { start, end } = range;
    console.log(`${start.line}:${start.character}-${end.line}:${end.character} ${severity} ${message}`);
  }
}
let shown;
const firstFindings = new Promise((resolve) => { shown = resolve; });

const vscode = withNothingElse({
  Position, Range, Uri, Diagnostic, Disposable,
  EventEmitter: rpc.Emitter, CancellationTokenSource: rpc.CancellationTokenSource,
  DiagnosticSeverity: { Error: "error", Warning: "warning", Information: "information", Hint: "hint" },
  version: "1.91.0",
  workspace: withNothingElse({
    getConfiguration: (part) => ({
      get: (name, otherwise) => (part === "rux" ? setting(`rux.${name}`) : otherwise),
    }),
    textDocuments: [document],
    notebookDocuments: [],
    workspaceFolders: [{ uri: Uri.file(path.dirname(script)), name: "machine", index: 0 }],
    onDidOpenTextDocument: event, onDidChangeTextDocument: event, onDidCloseTextDocument: event,
  }),
  languages: withNothingElse({
    match: () => 10,
    createDiagnosticCollection: () => ({
      set: (uri, findings) => { show(findings); shown(); },
      has: () => false, delete() {}, clear() {}, dispose() {},
    }),
  }),
  window: withNothingElse({
    showErrorMessage: async (message) => console.log(message),
    visibleTextEditors: [], activeTextEditor: undefined,
    tabGroups: withNothingElse({ all: [] }) }),
  env: { language: "en", appName: "VS Code" },
  extensions: withNothingElse({ all: [] }),
});

const load = Module._load;
Module._load = (name, ...others) => (name === "vscode" ? vscode : load(name, ...others));

async function main() {
  const { activate, deactivate } = require(extension);
  const client = await activate({ subscriptions: [] });
  if (client) await firstFindings;
  await deactivate();
}
main().catch((error) => {
  console.error(error);
  process.exitCode = 1;
});
