-- What Neovim shows of the language server. Waits for what has to come, however long it takes.
local out = assert(io.open(os.getenv("OUT"), "w"))
out:setvbuf("line")

local function show(...) out:write(table.concat({ ... }), "\n") end
local function wait(condition) vim.wait(2 ^ 31 - 1, condition, 5) end
local function findings() return vim.diagnostic.get(0) end

-- As if typed, in normal mode.
local function keys(text)
  vim.api.nvim_feedkeys(vim.api.nvim_replace_termcodes(text, true, false, true), "xt", false)
end

-- What is on the screen below a line.
local function underline(finding)
  local drawn = vim.diagnostic.get_namespace(finding.namespace).user_data.underline_ns
  local mark = vim.api.nvim_buf_get_extmarks(0, drawn, 0, -1, { details = true })[1]
  local columns = mark[4].end_col - mark[3]
  return string.rep(" ", mark[3]) .. string.rep("^", columns)
end

local function show_finding(line)
  wait(function() return #findings() > 0 end)
  for _, finding in ipairs(findings()) do
    show(vim.fn.getline(line))
    show(underline(finding))
    show(vim.diagnostic.severity[finding.severity]:lower(), ": ", finding.message)
  end
end

local function type_typo()
  show("A typo at the end of line 29:")
  keys("29GAW<Esc>")
  show_finding(29)
  show("")
end

local function take_fix()
  vim.ui.select = function(actions, _, choose)
    show("The fix, ", actions[1][2].title, ":")
    choose(actions[1])
  end
  vim.lsp.buf.code_action()
  wait(function() return #findings() == 0 end)
  show(vim.fn.getline(29))
  show("no findings")
end

-- What a popup menu would have, by Neovim's own rules.
local function complete()
  show("")
  show("The word again, up to MASK_L:")
  keys("29G0CCONTROLMASK  = MASK_L<Esc>")
  show_finding(29)
  vim.api.nvim_win_set_cursor(0, { 29, 20 })
  local params = vim.lsp.util.make_position_params()
  params.position.character = 21
  local answers = vim.lsp.buf_request_sync(0, "textDocument/completion", params, 2 ^ 31 - 1)
  local items = vim.lsp.util.text_document_completion_list_to_complete_items(
    answers[1].result, "MASK_L")
  for _, item in ipairs(items) do show(item.word, ": ", item.menu) end
  vim.fn.setline(29, "CONTROLMASK  = " .. items[1].word)
  wait(function() return #findings() == 0 end)
  show(vim.fn.getline(29))
  show("no findings")
end

local function go_to_definition()
  vim.api.nvim_win_set_cursor(0, { 29, 16 })
  vim.lsp.buf.definition()
  wait(function() return vim.fn.expand("%:t") ~= "fans.rux" end)
  show("")
  show("Defined in ", vim.fn.expand("%"), ", line ", tostring(vim.fn.line(".")))
  vim.cmd("buffer fans.rux")
end

local function rename()
  vim.api.nvim_win_set_cursor(0, { 29, 16 })
  vim.lsp.buf.rename("MASK_LIMITS")
  wait(function() return vim.fn.getline(29):find("MASK_LIMITS") end)
  show("")
  show("Renamed to MASK_LIMITS:")
  local lines = {}
  for _, buffer in ipairs(vim.api.nvim_list_bufs()) do
    local count = 0
    for _, line in ipairs(vim.api.nvim_buf_get_lines(buffer, 0, -1, false)) do
      if line:find("MASK_LIMITS") then count = count + 1 end
    end
    local name = vim.fn.fnamemodify(vim.api.nvim_buf_get_name(buffer), ":.")
    if count > 0 then table.insert(lines, name .. ": " .. count) end
  end
  table.sort(lines)
  for _, line in ipairs(lines) do show(line) end
end

local function format()
  show("")
  show("Formatted, where a value is too many:")
  vim.fn.setline(30, "THRESHOLD_WL=0x5dc,2400")
  -- The files of the renaming change one after the other.
  wait(function() return #findings() == 1 and findings()[1].message:find("THRESHOLD_WL") end)
  show(findings()[1].message)
  vim.lsp.buf.formatting_sync({}, 2 ^ 31 - 1)
  show(vim.fn.getline(30))
  vim.fn.setline(30, "THRESHOLD_WL = 2400")
  wait(function() return #findings() == 0 end)
  show("no findings")
end

-- The section with the definition is above the comment of the sensor's.
local function extract_word()
  vim.ui.select = function(actions, _, choose)
    for _, action in ipairs(actions) do
      if action[2].kind == "refactor.extract" then
        show("")
        show("A word for the number, ", action[2].title, ":")
        return choose(action)
      end
    end
  end
  vim.api.nvim_win_set_cursor(0, { 30, 16 })
  vim.lsp.buf.code_action()
  wait(function() return vim.fn.getline(20) == "[DEFINE]" end)
  for _, line in ipairs({ 20, 21, 33 }) do show(vim.fn.getline(line)) end
  wait(function() return #findings() == 0 end)
  show("no findings")
end

local function session()
  vim.cmd("edit fans.rux")
  wait(function() return #vim.lsp.buf_get_clients(0) > 0 end)
  type_typo()
  take_fix()
  complete()
  go_to_definition()
  rename()
  format()
  extract_word()
end

local done, reason = xpcall(session, debug.traceback)
if not done then show(reason) end
out:close()
vim.cmd("quitall!")
