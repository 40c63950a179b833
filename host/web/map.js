// The map: dragging moves it, the wheel and the buttons enlarge it about the place that is pointed at. The legend stays
// where it is; the scale bar follows.
(() => {
  const svg = document.querySelector("#map svg");
  const frame = svg.querySelector(".frame");
  const map = svg.querySelector(".map");
  const bar = svg.querySelector(".scale-bar");
  const LEAST = 1;
  const MOST = 400;
  let zoom = 1;
  let x = 0;
  let y = 0;
  let held = null;

  const area = document.createElementNS(svg.namespaceURI, "rect");  // what is white can be dragged too
  const shown = svg.querySelector("#frame rect");
  const [left, top, width, height] = ["x", "y", "width", "height"].map((name) => Number(shown.getAttribute(name)));
  for (const [name, value] of Object.entries({ x: left, y: top, width, height, fill: "#fff", "fill-opacity": 0 })) {
    area.setAttribute(name, value);
  }
  frame.prepend(area);

  function show() {
    x = Math.min(left * (1 - zoom), Math.max(x, (left + width) * (1 - zoom)));
    y = Math.min(top * (1 - zoom), Math.max(y, (top + height) * (1 - zoom)));
    map.setAttribute("transform", `translate(${x} ${y}) scale(${zoom})`);
    for (const text of bar.querySelectorAll("text")) {
      const metres = Number(bar.dataset.length) * Number(text.dataset.share) / zoom;
      text.textContent = String(Number(metres.toPrecision(3))) + (text.dataset.share === "1" ? " m" : "");
    }
    svg.querySelector(".coordinates").style.visibility = zoom === 1 ? "visible" : "hidden";  // they are of the whole
  }

  // A place in the window as one of the picture.
  function at(event) {
    return new DOMPoint(event.clientX, event.clientY).matrixTransform(svg.getScreenCTM().inverse());
  }

  function enlarge(factor, p) {
    const next = Math.min(MOST, Math.max(LEAST, zoom * factor));
    x = p.x - (p.x - x) * next / zoom;
    y = p.y - (p.y - y) * next / zoom;
    zoom = next;
    show();
  }

  frame.addEventListener("wheel", (event) => {
    event.preventDefault();
    enlarge(Math.exp(-event.deltaY / 400), at(event));
  }, { passive: false });
  frame.addEventListener("pointerdown", (event) => {
    held = at(event);
    frame.setPointerCapture(event.pointerId);
  });
  frame.addEventListener("pointermove", (event) => {
    if (held === null) return;
    const p = at(event);
    x += p.x - held.x;
    y += p.y - held.y;
    held = p;
    show();
  });
  for (const end of ["pointerup", "pointercancel"]) frame.addEventListener(end, () => { held = null; });

  const centre = { x: left + width / 2, y: top + height / 2 };
  document.querySelector("#closer").addEventListener("click", () => enlarge(1.6, centre));
  document.querySelector("#farther").addEventListener("click", () => enlarge(1 / 1.6, centre));
  document.querySelector("#whole").addEventListener("click", () => { zoom = 1; x = 0; y = 0; show(); });
})();
