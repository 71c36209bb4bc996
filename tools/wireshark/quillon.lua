-- Dissects Quillon's packets in Wireshark and tshark. Put it into the folder of personal Lua plugins (Help > About
-- Wireshark > Folders), or run: tshark -X lua_script:quillon.lua -Y 'quillon.message == "Alert"'
--
-- docs/protocol.md describes the packets.

local PORT = 1414

local quillon = Proto("quillon", "Quillon")

-- A packet does not contain its code page. In double-byte code pages, a bar may be the trail byte of a character.
local CODE_PAGES = {
  [1250] = { encoding = ENC_WINDOWS_1250 },
  [1251] = { encoding = ENC_WINDOWS_1251 },
  [1252] = { encoding = ENC_WINDOWS_1252 },
  [936] = { encoding = ENC_GB18030, pairs_from = 0x81 },
  [949] = { encoding = ENC_EUC_KR, pairs_from = 0x81 },
}
quillon.prefs.code_page = Pref.enum("Code page", 1252, "ANSI code page of the segment's desks", {
  { 1, "1250 Central Europe", 1250 },
  { 2, "1251 Cyrillic", 1251 },
  { 3, "1252 Western Europe", 1252 },
  { 4, "936 Simplified Chinese", 936 },
  { 5, "949 Korean", 949 },
}, false)

local MARKERS = { [0xDE] = "chat", [0xDF] = "alert" }
local STATUS = { [0] = "Available", [1] = "Alerts Only", [2] = "Do Not Disturb" }

local f = {
  sender = ProtoField.string("quillon.sender", "Sender"),
  hidden = ProtoField.bool("quillon.hidden", "Hidden name"),
  kind = ProtoField.string("quillon.kind", "Kind"),
  message = ProtoField.string("quillon.message", "Message"),
  argument = ProtoField.string("quillon.argument", "Argument"),
  marker = ProtoField.string("quillon.marker", "Marker"),
  text = ProtoField.string("quillon.text", "Text"),
  recipient = ProtoField.string("quillon.recipient", "Recipient"),
  colour = ProtoField.string("quillon.colour", "Colour", "As #RRGGBB"),
  status = ProtoField.uint8("quillon.status", "Status", base.DEC, STATUS),
}
quillon.fields = f

local malformed = ProtoExpert.new("quillon.malformed", "Malformed packet", expert.group.MALFORMED, expert.severity.ERROR)
quillon.experts = { malformed }

local function code_page() return CODE_PAGES[quillon.prefs.code_page] or CODE_PAGES[1252] end

-- The offsets of the bars, counted from 0, from `first` on.
local function bars(bytes, first)
  local found, from, i = {}, code_page().pairs_from, first
  while i < bytes:len() do
    local byte = bytes:get_index(i)
    if byte == 0x7C then found[#found + 1] = i end
    i = i + ((from and byte >= from and byte < 0xFF and i + 1 < bytes:len()) and 2 or 1)
  end
  return found
end

-- A part of the packet as text; the part may be empty.
local function text_of(buffer, first, past)
  if past <= first then return "" end
  return buffer(first, past - first):string(code_page().encoding)
end

-- Adds the bytes, not the decoded text, which would be cut if it is longer than the range.
local function add_text(tree, field, buffer, first, past)
  tree:add_packet_field(field, buffer(first, past - first), code_page().encoding)
  return text_of(buffer, first, past)
end

-- Skips blanks, tabs and line feeds, and stops at the first character that is not part of a number. Nil, which stands
-- for 0, if there is no number.
local function tolerant_number(text)
  local plain = text:gsub("[ \t\n]", "")
  local hexadecimal = plain:match("^&[hH](%x+)")
  if hexadecimal then return tonumber(hexadecimal, 16) end
  return tonumber(plain:match("^[+-]?%d+%.?%d*") or plain:match("^[+-]?%.%d+"))
end

-- Adds a marked text and returns its message name; nil if the mark is missing.
local function show_text(tree, buffer, first, past)
  local marker = first < past and MARKERS[buffer(first, 1):uint()]
  if not marker then return nil end
  tree:add(f.marker, buffer(first, 1), marker)
  add_text(tree, f.text, buffer, first + 1, past)
  return marker == "chat" and "Chat line" or "Alert"
end

local NO_MARKER, NO_NUMBER = "a text without a marker", "no number, which is read as 0"

local KINDS = {}

KINDS["M/"] = function(tree, buffer, first, past, sender)
  if first == past then return "Presence" end
  local shown = show_text(tree, buffer, first, past)
  if shown then return shown .. " to everybody" end
  if text_of(buffer, first, past):sub(1, #sender + 1) == sender .. " " then return "Greeting" end
  return nil, NO_MARKER
end

KINDS["P/"] = function(tree, buffer, first, past)
  local marked = first < past and MARKERS[buffer(first, 1):uint()]
  local found = bars(buffer(0, past):bytes(), marked and first + 1 or first)
  local bar = found[#found]
  if not bar then return nil, "no recipient" end
  add_text(tree, f.recipient, buffer, bar + 1, past)
  local shown = show_text(tree, buffer, first, bar)
  if shown then return "Private " .. shown:lower() end
  return nil, NO_MARKER
end

KINDS["C/"] = function(tree, buffer, first, past)
  local found = tolerant_number(text_of(buffer, first, past))
  local number = found or 0
  if math.abs(number) >= 2 ^ 31 then return nil, "a colour that is too large" end
  local bits = math.floor(number) % 0x1000000
  local colour = string.format("#%02X%02X%02X", bits % 256, math.floor(bits / 256) % 256, math.floor(bits / 65536))
  tree:add(f.colour, colour):set_generated()  -- longer than its bytes
  return "Colour", not found and NO_NUMBER or nil
end

KINDS["S/"] = function(tree, buffer, first, past)
  local found = tolerant_number(text_of(buffer, first, past))
  local number = found or 0
  if not STATUS[number] then return nil, "an unknown status" end
  tree:add(f.status, buffer(first, past - first), number)
  return "Status", not found and NO_NUMBER or nil
end

KINDS["L/"] = function() return "Leave" end

KINDS["B/"] = function(tree, buffer, first, past)
  add_text(tree, f.text, buffer, first, past)
  return "Notice"
end

function quillon.dissector(buffer, pinfo, root)
  local past = buffer:len()
  if past == 0 then return 0 end
  pinfo.cols.protocol = "Quillon"
  local tree = root:add(quillon, buffer())
  local bar = bars(buffer():bytes(), 0)[1]
  local sender = add_text(tree, f.sender, buffer, 0, bar or past)
  if sender:sub(1, 1) == "_" then tree:add(f.hidden, buffer(0, 1), true) end

  local message, fault
  local first = bar and math.min(bar + 3, past) or past
  local kind = bar and text_of(buffer, bar + 1, first):upper() or ""
  if bar then
    tree:add(f.kind, buffer(bar + 1, first - bar - 1), kind)
    add_text(tree, f.argument, buffer, first, past)
  end
  if KINDS[kind] then
    message, fault = KINDS[kind](tree, buffer, first, past, sender)
  else
    fault = bar and "an unknown kind" or "no bar"
  end
  if message then tree:add(f.message, buffer(), message):set_generated() end
  if fault then tree:add_proto_expert_info(malformed, "Malformed: " .. fault) end
  pinfo.cols.info = sender .. ": " .. (message or "Malformed (" .. fault .. ")")
  return past
end

DissectorTable.get("udp.port"):add(PORT, quillon)
