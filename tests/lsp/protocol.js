// Talks with rux lsp by the library that VS Code uses, which takes apart and judges what it gets.
//
//   node protocol.js LIBRARIES RUX FOLDER
//
// LIBRARIES is the extension that scripts/vsix builds.
"use strict";
const assert = require("assert");
const { spawn } = require("child_process");
const fs = require("fs");
const Module = require("module");
const path = require("path");
const url = require("url");

const [libraries, rux, folder] = process.argv.slice(2).map((name) => path.resolve(name));
if (!fs.existsSync(path.join(libraries, "node_modules"))) {
  console.log("skipped: needs the packages that scripts/vsix fetches");
  process.exit();
}
const lsp = Module.createRequire(path.join(libraries, "package.json"))("vscode-languageserver-protocol/node");

// é takes two bytes and one unit, € three and one, 😀 four and two.
const LINES = ["[MORVRUX]", "VERSION = 1.0", "[DEFINE]", "EVER = 3", "[DEVICE]", "NAME = FAN", "ID = 1",
  "INITFLAG = é€😀EVER", "CONTROLMASK = 0", ""];
const LINE = 7;
const COLUMNS = { "utf-8": [11, 24], "utf-16": [11, 19], "utf-32": [11, 18] };

class Session {
  constructor(encoding) {
    this.server = spawn(rux, ["lsp"], { stdio: ["pipe", "pipe", "inherit"] });
    this.status = new Promise((resolve) => this.server.on("exit", resolve));
    this.connection = lsp.createProtocolConnection(
      new lsp.StreamMessageReader(this.server.stdout), new lsp.StreamMessageWriter(this.server.stdin));
    this.connection.onError(([error]) => { throw error; });
    this.findings = new Map();
    this.waiting = () => {};
    this.connection.onNotification(lsp.PublishDiagnosticsNotification.type, (found) => {
      assert(found.diagnostics.every((finding) => lsp.Diagnostic.is(finding)));
      this.findings.set(found.version, found.diagnostics);
      this.waiting();
    });
    this.connection.listen();
    this.encoding = encoding;
    this.uri = url.pathToFileURL(path.join(folder, "main.rux")).href;
  }

  async start() {
    const general = this.encoding === "silent" ? {} : { positionEncodings: [this.encoding] };
    const { capabilities } = await this.connection.sendRequest(lsp.InitializeRequest.type,
      { processId: process.pid, rootUri: url.pathToFileURL(folder).href, capabilities: { general } });
    await this.connection.sendNotification(lsp.InitializedNotification.type, {});
    return capabilities;
  }

  // What is found in a version of the text.
  async found(version) {
    while (!this.findings.has(version)) await new Promise((resolve) => { this.waiting = resolve; });
    return this.findings.get(version);
  }

  async open(version, text) {
    const textDocument = { uri: this.uri, languageId: "rux", version, text };
    await this.connection.sendNotification(lsp.DidOpenTextDocumentNotification.type, { textDocument });
    return this.found(version);
  }

  async replace(version, from, to, text) {
    await this.connection.sendNotification(lsp.DidChangeTextDocumentNotification.type, {
      textDocument: { uri: this.uri, version },
      contentChanges: [{ range: lsp.Range.create(LINE, from, LINE, to), text }],
    });
    return this.found(version);
  }

  async actions(range) {
    const actions = await this.connection.sendRequest(lsp.CodeActionRequest.type,
      { textDocument: { uri: this.uri }, range, context: { diagnostics: [] } });
    assert(actions.every((action) => lsp.CodeAction.is(action)));
    return actions;
  }

  async end() {
    await this.connection.sendRequest(lsp.ShutdownRequest.type);
    await this.connection.sendNotification(lsp.ExitNotification.type);
    assert.strictEqual(await this.status, 0);
  }
}

async function talk(encoding) {
  const session = new Session(encoding);
  const capabilities = await session.start();
  const agreed = encoding === "silent" ? "utf-16" : encoding;
  assert.strictEqual(capabilities.positionEncoding, agreed);
  const [from, to] = COLUMNS[agreed];

  // Versions need not begin at 1, nor be without gaps.
  const errors = (found) => found.filter(({ severity }) => severity === lsp.DiagnosticSeverity.Error);
  const [finding, ...others] = errors(await session.open(7, LINES.join("\n")));
  assert.deepStrictEqual(others, []);
  assert.strictEqual(finding.code, "undefined-word");
  assert.deepStrictEqual(finding.range, lsp.Range.create(LINE, from, LINE, to));

  // Without what is wide it is a word; with one letter too many it has a fix.
  assert.deepStrictEqual(errors(await session.replace(20, from, to - 4, "")), []);
  const [typo] = errors(await session.replace(21, from + 4, from + 4, "R"));
  assert.deepStrictEqual(typo.range, lsp.Range.create(LINE, from, LINE, from + 5));
  const [fix] = await session.actions(typo.range);
  assert.deepStrictEqual(fix.edit.changes[session.uri], [lsp.TextEdit.replace(typo.range, "EVER")]);
  assert.deepStrictEqual(errors(await session.replace(22, from, from + 5, "EVER")), []);

  // What does not exist is refused, and the connection goes on.
  await assert.rejects(session.connection.sendRequest("textDocument/teleport", {}),
    { code: lsp.ErrorCodes.MethodNotFound });
  await session.end();
}

async function main() {
  fs.rmSync(folder, { recursive: true, force: true });
  fs.mkdirSync(folder, { recursive: true });
  for (const encoding of ["silent", "utf-8", "utf-16", "utf-32"]) await talk(encoding);
}
main().catch((error) => {
  console.error(error);
  process.exit(1);
});
