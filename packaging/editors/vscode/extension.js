// Starts the language server with the first script.
"use strict";

const vscode = require("vscode");

let client;

// scripts/vsix adds it. Without it, the folder is an extension that highlights.
function clientLibrary() {
  try {
    return require("vscode-languageclient/node");
  } catch (error) {
    if (error.code !== "MODULE_NOT_FOUND") throw error;
    return undefined;
  }
}

async function activate() {
  const library = clientLibrary();
  if (!library) return undefined;
  const settings = vscode.workspace.getConfiguration("rux");
  const server = { command: settings.get("path"), args: ["lsp", ...settings.get("arguments")] };
  client = new library.LanguageClient("rux", server, { documentSelector: [{ language: "rux" }] });
  await client.start();
  return client;
}

function deactivate() {
  return client?.stop();
}

module.exports = { activate, deactivate };
