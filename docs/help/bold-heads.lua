-- A table's head in bold; pandoc's RTF writer leaves it plain.

local function bold(block)
  if block.t == "Plain" or block.t == "Para" then
    block.content = { pandoc.Strong(block.content) }
  end
  return block
end

function Table(table)
  local simple = pandoc.utils.to_simple_table(table)
  for _, cell in ipairs(simple.headers) do
    for i, block in ipairs(cell) do
      cell[i] = bold(block)
    end
  end
  return pandoc.utils.from_simple_table(simple)
end
