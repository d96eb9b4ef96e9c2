// A table takes no anchor between its rows: the browser puts it in front of the table. Here each goes to the first row of
// its program, so that the figures lead there.
document.addEventListener("DOMContentLoaded", function () {
  document.querySelectorAll("table.flat").forEach(function (table) {
    var last = null;
    Array.prototype.forEach.call(table.rows, function (row) {
      var cell = row.cells[0];
      if (!cell || cell.tagName !== "TD" || cell.textContent === last) return;
      last = cell.textContent;
      for (var list = 0; list < 3; list++) {
        var anchor = document.getElementById(last + ":" + list);
        if (anchor && anchor !== row && anchor.tagName === "A" && follows(table, anchor)) {
          var id = anchor.id;
          document.querySelectorAll("a[id]").forEach(function (a) { if (a.id === id) a.removeAttribute("id"); });
          row.id = id;
        }
      }
    });
  });
  if (location.hash) location.replace(location.hash);

  // Whether the anchor stands in front of this table and behind the table before it.
  function follows(table, anchor) {
    if (!(anchor.compareDocumentPosition(table) & Node.DOCUMENT_POSITION_FOLLOWING)) return false;
    var tables = Array.prototype.slice.call(document.querySelectorAll("table.flat"));
    var before = tables[tables.indexOf(table) - 1];
    return !before || Boolean(before.compareDocumentPosition(anchor) & Node.DOCUMENT_POSITION_FOLLOWING);
  }
});
