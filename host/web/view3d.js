// The 3-D view: the compared ground in the colours of the map, and what it is compared with, translucent. Dragging turns
// it. Nothing is drawn but when something has changed.
import {
  AmbientLight, BufferAttribute, BufferGeometry, Color, DirectionalLight, DoubleSide, Group, Mesh, MeshBasicMaterial,
  MeshLambertMaterial, PerspectiveCamera, Scene, WebGLRenderer,
} from "three";
import { OrbitControls } from "three/addons/controls/OrbitControls.js";

const RASTER = 65535;  // coordinates come as shares of the extent, in 16 bits

function numbers(base64) {
  const bytes = Uint8Array.from(atob(base64), (c) => c.charCodeAt(0));
  const view = new DataView(bytes.buffer);
  return Uint16Array.from({ length: bytes.length / 2 }, (_, i) => view.getUint16(2 * i, true));
}

// Positions about the middle of the extent, whole heights above its lowest point.
function positionsOf(model, base64) {
  const raster = numbers(base64);
  const [width, depth, height] = model.extent;
  const positions = new Float32Array(raster.length);
  for (let i = 0; i < raster.length; i += 3) {
    positions[i] = (raster[i] / RASTER - 0.5) * width;
    positions[i + 1] = (raster[i + 1] / RASTER - 0.5) * depth;
    positions[i + 2] = (raster[i + 2] / RASTER - 0.5) * height;
  }
  return new BufferAttribute(positions, 3);
}

function meshOf(positions, triangles, material) {
  const geometry = new BufferGeometry();
  geometry.setAttribute("position", positions);
  geometry.setIndex(new BufferAttribute(numbers(triangles), 1));
  return new Mesh(geometry, material);
}

function terrain(model) {
  const group = new Group();
  const positions = positionsOf(model, model.ground.positions);
  for (const face of model.ground.faces) {
    const material = new MeshLambertMaterial({ color: new Color(face.colour), flatShading: true, side: DoubleSide });
    group.add(meshOf(positions, face.triangles, material));
  }
  const other = new MeshBasicMaterial({
    color: new Color("#55606a"), transparent: true, opacity: 0.28, side: DoubleSide, depthWrite: false,
  });
  group.add(meshOf(positionsOf(model, model.reference.positions), model.reference.triangles, other));
  return group;
}

function start(place, model) {
  const renderer = new WebGLRenderer({ antialias: true, alpha: true });
  place.append(renderer.domElement);
  const scene = new Scene();
  const group = terrain(model);
  scene.add(group, new AmbientLight("#fff", 1.4));
  const sun = new DirectionalLight("#fff", 2.2);
  sun.position.set(-1, 1, 1.3);  // from the north-west, as maps are shaded
  scene.add(sun);

  const size = Math.hypot(...model.extent);
  const camera = new PerspectiveCamera(35, 1, size / 500, size * 20);
  camera.up.set(0, 0, 1);
  camera.position.set(0.1 * size, -0.95 * size, 0.8 * size);
  const controls = new OrbitControls(camera, renderer.domElement);

  const draw = () => renderer.render(scene, camera);
  const fit = () => {
    renderer.setPixelRatio(window.devicePixelRatio);
    renderer.setSize(place.clientWidth, place.clientHeight);
    camera.aspect = place.clientWidth / place.clientHeight;
    camera.updateProjectionMatrix();
    draw();
  };
  const heights = document.querySelector("#heights");
  const raise = () => {
    group.scale.z = Number(heights.value);
    document.querySelector("#times").textContent = `${heights.value} times`;
    draw();
  };
  controls.addEventListener("change", draw);
  heights.addEventListener("input", raise);
  new ResizeObserver(fit).observe(place);
  fit();
  raise();
  place.dataset.state = "drawn";
}

const place = document.querySelector("#terrain");
try {
  start(place, JSON.parse(document.querySelector("#model").textContent));
} catch (fault) {
  place.dataset.state = "failed";
  place.innerHTML = "<p>The 3-D view needs WebGL, which this browser does not offer.</p>";
  console.warn(fault);
}
