// Runs inside a converted page: follows every link, looks at the colours, and
// gives what it found. run.py puts `expected` in front of it.
'use strict';

const findings = [];
const note = (name, ok, detail = '') => findings.push({name, ok: Boolean(ok), detail: String(detail)});
// Waits a second at most.
async function until(holds) {
  for (let i = 0; !holds() && i < 200; ++i) await new Promise((done) => setTimeout(done, 5));
}

const anchorOf = (name) =>
    document.getElementById(name) || document.querySelector(`a[name="${CSS.escape(name)}"]`);
const inView = (element) => {
  const box = element.getBoundingClientRect();
  return box.top >= -1 && box.top < innerHeight;
};

// Scrolls to where the target cannot be seen; false when the page is too short for that.
function lookAway(target) {
  for (const place of [0, document.documentElement.scrollHeight]) {
    scrollTo(0, place);
    if (!inView(target)) return true;
  }
  return false;
}

async function follow(link, what) {
  const name = decodeURIComponent(link.getAttribute('href').slice(1));
  const label = `${what} "${link.textContent.trim()}"`;
  const target = anchorOf(name);
  if (!target) return note(`${label} has an anchor`, false, name);
  const away = lookAway(target);
  const isThere = () => decodeURIComponent(location.hash) === '#' + name;
  history.replaceState(null, '', location.pathname);
  link.click();
  await until(() => isThere() && inView(target));
  note(`${label} changes the address`, isThere(), location.hash);
  note(`${label} brings its target into view`, away && inView(target),
       `at ${target.getBoundingClientRect().top}, out of view before: ${away}`);
}

const linksTo = (test) => [...document.querySelectorAll('a[href^="#"]')].filter(test);
const targetName = (link) => decodeURIComponent(link.getAttribute('href').slice(1));
const inIndex = (link) => !link.closest('pre');

async function checkIndex() {
  const links = linksTo(inIndex);
  note('the index lists the procedures in their order',
       links.map(targetName).join() === expected.procedures.join(), links.map(targetName).join());
  note('the page is longer than the window', document.documentElement.scrollHeight > 2 * innerHeight);
  for (const link of links) await follow(link, 'index link');
}

async function checkCalls() {
  const links = linksTo((link) => !inIndex(link) && targetName(link) !== 'Index');
  const counted = {};
  for (const link of links) counted[targetName(link)] = (counted[targetName(link)] || 0) + 1;
  for (const name of new Set([...Object.keys(counted), ...Object.keys(expected.calls)]))
    note(`calls of ${name} are linked`, counted[name] === expected.calls[name],
         `${counted[name]} links, ${expected.calls[name]} calls`);
  for (const link of links) await follow(link, 'call link');
}

async function checkHeads() {
  for (const name of expected.procedures) {
    const head = anchorOf(name);
    note(`the head of ${name} is a link to the index`, head?.getAttribute('href') === '#Index',
         head?.outerHTML);
  }
  const links = linksTo((link) => targetName(link) === 'Index');
  note('there are heads', links.length >= expected.procedures.length, links.length);
  for (const link of links) await follow(link, 'head');
}

// The innermost element whose text passes the test.
const element = (test) => [...document.querySelectorAll('pre a, pre span')].find(
    (candidate) => test(candidate.textContent) && !candidate.children.length);

function checkLook(what, test, look) {
  const found = element(test);
  if (!found) return note(`there is ${what}`, false);
  const style = getComputedStyle(found);
  for (const [property, value] of Object.entries(look))
    note(`${what} has the ${property} of the scheme`, style[property] === value, style[property]);
}

function checkColors() {
  const white = 'rgb(255, 255, 255)';
  // Not the font: "font: italic bold" names no size and no family, so browsers skip it.
  const procedure = {color: 'rgb(0, 0, 128)', backgroundColor: 'rgb(223, 223, 223)'};
  checkLook('a procedure head', (text) => text.startsWith(expected.head), procedure);
  checkLook('a procedure end', (text) => text.trim() === 'End Sub', procedure);
  checkLook('a reserved word', (text) => text === 'Dim',
            {color: 'rgb(0, 0, 255)', backgroundColor: white});
  checkLook('a constant', (text) => text === 'True',
            {color: 'rgb(0, 128, 128)', backgroundColor: white});
  checkLook('a comment', (text) => text.trim().startsWith("'"),
            {color: 'rgb(0, 128, 0)', backgroundColor: white});
  checkLook('a quotation mark', (text) => text === '"',
            {color: 'rgb(255, 0, 0)', backgroundColor: white});
}

async function check() {
  checkColors();
  note('umlauts are read as umlauts', document.body.textContent.includes(expected.umlauts));
  await checkIndex();
  await checkCalls();
  await checkHeads();
}

check()
    .catch((error) => note('the check runs to its end', false, error.stack))
    .then(() => findings);
