// A table takes no anchor between its rows: the browser puts it in front of the table. Here each goes to the first row of
// its program, so that the figures lead there.
document.addEventListener("DOMContentLoaded", function () {
  var waiting = new Map(), placed = new Set();
  document.querySelectorAll("a[id], table.flat").forEach(function (element) {
    if (element.tagName === "A") {
      if (placed.has(element.id)) element.removeAttribute("id");
      else if (/:[012]$/.test(element.id)) waiting.set(element.id, (waiting.get(element.id) || []).concat(element));
      return;
    }
    var last = null;
    Array.from(element.rows).forEach(function (row) {
      var cell = row.cells[0];
      if (!cell || cell.tagName !== "TD" || cell.textContent === last) return;
      last = cell.textContent;
      for (var list = 0; list < 3; list++) {
        var id = last + ":" + list;
        if (!waiting.has(id)) continue;
        waiting.get(id).forEach(function (anchor) { anchor.removeAttribute("id"); });
        waiting.delete(id);
        placed.add(id);
        row.id = id;
      }
    });
  });
  if (location.hash) location.replace(location.hash);
});
