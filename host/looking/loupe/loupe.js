// The loupe: the sheet's plates as tiles that Leaflet moves and zooms, put together here as inks over each other.
(function () {
'use strict';

const sheets = JSON.parse(document.getElementById('sheets').textContent);
const side = sheets.tile, most = 5;  // a pixel of the plate is at most 2^most of the display's
const element = id => document.getElementById(id);
const reduced = matchMedia('(prefers-reduced-motion: reduce)').matches;

// Between two of the display's pixels, dots would be blurred.
function toWholePixels() {
  const sheet = element('sheet');
  sheet.style.top = '0';
  sheet.style.top = (1 - sheet.getBoundingClientRect().top % 1) % 1 + 'px';
}
toWholePixels();
addEventListener('resize', toWholePixels);

// Places count in pixels of the plate, down from its upper left corner; zoom 0 shows each as one of the page's.
const map = L.map('sheet', {
  crs: L.extend({}, L.CRS.Simple, {transformation: new L.Transformation(1, 0, 1, 0)}),
  attributionControl: false, fadeAnimation: false, zoomAnimation: !reduced, inertia: !reduced,
  maxZoom: most, minZoom: -30, maxBoundsViscosity: 0.8, wheelPxPerZoomLevel: 100
});

let page = null, inks = null, grid = null;

function inked(plate, level, x, y) {
  const tiles = plate.levels[level];
  if (!tiles || x < 0 || y < 0 || x >= tiles.across || y >= tiles.down)
    return false;
  tiles.bits = tiles.bits || atob(tiles.inked);
  const at = y * tiles.across + x;
  return (tiles.bits.charCodeAt(at >> 3) >> (7 - at % 8) & 1) === 1;
}

function load(url) {
  return new Promise((loaded, failed) => {
    const image = new Image();
    image.onload = () => loaded(image);
    image.onerror = () => failed(new Error(url + ' cannot be read'));
    image.src = url;
  });
}

// A tile of all plates that are on. What was loaded is kept, so that plates go on and off at once.
class Tile {
  constructor(coords) {
    this.canvas = document.createElement('canvas');
    this.canvas.width = this.canvas.height = side;
    this.level = -coords.z;
    this.x = coords.x;
    this.y = coords.y;
    this.images = new Map();
  }

  plates() {
    return page.plates.filter(plate => plate.on && inked(plate, this.level, this.x, this.y));
  }

  image(plate) {
    if (!this.images.has(plate))
      this.images.set(plate, load(sheets.tiles + plate.folder + '/' + this.level + '/' + this.x + '-' + this.y + '.png'));
    return this.images.get(plate);
  }

  async show() {
    const turn = this.turn = {}, plates = this.plates();
    const loaded = await Promise.allSettled(plates.map(plate => this.image(plate)));
    if (this.turn !== turn)
      return;
    const paper = this.canvas.getContext('2d');
    const left = size => Math.ceil(size / 2 ** this.level);
    paper.globalCompositeOperation = 'source-over';
    paper.fillStyle = '#fff';
    paper.fillRect(0, 0, left(page.width) - this.x * side, left(page.height) - this.y * side);
    paper.globalCompositeOperation = 'multiply';
    for (const image of loaded)
      if (image.status === 'fulfilled')
        paper.drawImage(image.value, 0, 0);
    const missing = loaded.find(image => image.status === 'rejected');
    plates.forEach((plate, i) => loaded[i].status === 'rejected' && this.images.delete(plate));
    if (missing)
      throw missing.reason;
  }
}

const Inks = L.GridLayer.extend({
  initialize(options) {
    L.GridLayer.prototype.initialize.call(this, options);
    this.tiles = new Map();
    this.on('tileunload', event => this.tiles.delete(event.tile));
  },
  createTile(coords, done) {
    const tile = new Tile(coords);
    this.tiles.set(tile.canvas, tile);
    tile.show().then(() => done(null, tile.canvas), error => done(error, tile.canvas));
    return tile.canvas;
  },
  showAgain() {
    const busy = element('sheet');
    busy.setAttribute('aria-busy', 'true');
    return Promise.allSettled([...this.tiles.values()].map(tile => tile.show())).then(results => {
      busy.setAttribute('aria-busy', 'false');
      say(results.find(result => result.status === 'rejected'));
    });
  }
});

// The lines on which the middles of dots should lie, one set or two that cross. Shown where they are some pixels apart.
const Grid = L.GridLayer.extend({
  createTile(coords) {
    const canvas = document.createElement('canvas'), size = this.getTileSize();
    canvas.width = size.x;
    canvas.height = size.y;
    const times = 2 ** coords.z, asked = this.options.asked, apart = page.dpi / asked.frequency * times;
    if (apart < 5)
      return canvas;
    const pen = canvas.getContext('2d'), turn = asked.angle * Math.PI / 180;
    for (const across of asked.lines ? [Math.PI / 2] : [0, Math.PI / 2])
      for (const [width, colour] of [[3, '#fffc'], [1, '#d3006a']])
        this.draw(pen, {x: coords.x * size.x - asked.x * times, y: coords.y * size.y - asked.y * times}, size,
                  turn + across, apart, width, colour);
    return canvas;
  },
  // Lines square to a direction, through the point from which `from` is counted.
  draw(pen, from, size, direction, apart, width, colour) {
    const x = Math.cos(direction), y = Math.sin(direction), long = size.x + size.y;
    const places = [[0, 0], [size.x, 0], [0, size.y], [size.x, size.y]].map(
      ([right, down]) => (from.x + right) * x + (from.y + down) * y);
    pen.lineWidth = width;
    pen.strokeStyle = colour;
    pen.beginPath();
    for (let line = Math.floor(Math.min(...places) / apart); line * apart <= Math.max(...places); ++line) {
      const middle = (from.x + size.x / 2) * x + (from.y + size.y / 2) * y, by = line * apart - middle;
      const atX = size.x / 2 + by * x, atY = size.y / 2 + by * y;
      pen.moveTo(atX - long * y, atY + long * x);
      pen.lineTo(atX + long * y, atY - long * x);
    }
    pen.stroke();
  }
});

function say(problem) {
  const middle = map.getCenter(), zoom = map.getZoom(), mm = pixels => (pixels / page.dpi * 25.4).toFixed(1);
  const scale = zoom >= 0 ? 2 ** zoom + ' to 1' : '1 to ' + 2 ** -zoom;
  const asked = page.plates[element('grid').value];
  const far = asked && asked.grid && page.dpi / asked.grid.frequency * 2 ** zoom < 5 ? ' Zoom in to see the grid.' : '';
  element('where').textContent = problem ? String((problem.reason || problem).message) :
    'Dots ' + scale + ', at ' + mm(middle.lng) + ' × ' + mm(middle.lat) + ' mm.' + far;
}

function showGrid() {
  if (grid)
    grid.remove();
  const plate = page.plates[element('grid').value];
  grid = plate && plate.grid ? new Grid({asked: plate.grid, minZoom: -30, maxZoom: most, pane: 'overlayPane'}).addTo(map) : null;
  say();
}

function bounds() {
  return L.latLngBounds([0, 0], [page.height, page.width]);
}

function wholeSheet() {
  map.fitBounds(bounds(), {animate: false});
}

function dots() {
  const [left, top, width, height] = page.place;
  map.setView([top + height / 2, left + width / 2], 1, {animate: false});
}

function plateBox(plate) {
  const label = document.createElement('label'), box = document.createElement('input'), swatch = document.createElement('i');
  box.type = 'checkbox';
  box.checked = plate.on;
  box.addEventListener('change', () => {
    plate.on = box.checked;
    inks.showAgain();
  });
  swatch.style.background = plate.colour;
  label.append(box, swatch, plate.name);
  return label;
}

function showPage(shown) {
  page = shown;
  element('page').value = String(sheets.pages.indexOf(page));
  page.plates.forEach(plate => { plate.on = plate.on !== false; });
  element('plates').replaceChildren(...page.plates.map(plateBox));
  element('grid').replaceChildren(new Option('None', ''), ...page.plates.flatMap(
    (plate, i) => plate.grid ? [new Option(plate.name + ', ' + plate.grid.words, String(i))] : []));
  if (inks)
    inks.remove();
  const levels = Math.max(...page.plates.map(plate => plate.levels.length));
  map.setMinZoom(-30);
  map.setMaxBounds(null);
  wholeSheet();
  map.setMinZoom(Math.min(map.getZoom(), 0));
  map.setMaxBounds(bounds().pad(0.5));
  inks = new Inks({tileSize: side, minZoom: -30, maxZoom: most, minNativeZoom: 1 - levels, maxNativeZoom: 0, bounds: bounds(),
                   keepBuffer: 1, updateWhenIdle: false, updateWhenZooming: false});
  const busy = element('sheet');
  inks.on('loading', () => busy.setAttribute('aria-busy', 'true'));
  inks.on('load', () => {
    busy.setAttribute('aria-busy', 'false');
    performance.mark('loupe-shown');
  });
  inks.on('tileerror', event => say(event.error));
  inks.addTo(map);
  showGrid();
}

// #page-3, or #page-3-dots for the place where its dots show best.
function goTo(fragment) {
  const asked = /^#page-(\d+)(-dots)?$/.exec(fragment) || [];
  const shown = sheets.pages.find(one => String(one.number) === asked[1]) || sheets.pages[0];
  if (shown !== page)
    showPage(shown);
  if (asked[2])
    dots();
}

map.on('moveend zoomend', () => page && say());
element('page').append(...sheets.pages.map((one, i) => new Option(String(one.number), String(i))));
element('page').addEventListener('change', () => showPage(sheets.pages[element('page').value]));
element('grid').addEventListener('change', showGrid);
element('whole').addEventListener('click', wholeSheet);
element('dots').addEventListener('click', dots);
addEventListener('hashchange', () => goTo(location.hash));
map.setView([0, 0], 0);
goTo(location.hash);
window.loupe = {map: map};
}());
