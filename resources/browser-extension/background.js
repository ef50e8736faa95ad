// Answers Pacelet, through the program that the browser starts for it: requests of the form
// {id, ask, …} get {id, …} or {id, error}. Does nothing by itself, reads no page, and never sees an
// incognito window.
"use strict";

const host = "app.pacelet.browser";

/// How long to wait before the next try to reach the host, in minutes: twice as long each time.
const firstWait = 0.5;
const longestWait = 4;

/// How long a closing page is waited for, in milliseconds.
const patience = 1000;

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

/// A connection that lasted this long, in milliseconds, was a good one.
const settled = 10000;

/// The window, when it is one that may be touched: an ordinary one that is still there.
async function ordinaryWindow(id) {
  const window = await chrome.windows.get(id, { populate: true }).catch(() => null);
  return window && window.type === "normal" && !window.incognito ? window : null;
}

async function requireWindow(id) {
  const window = await ordinaryWindow(id);
  if (!window) {
    throw new Error(`There is no window ${id} any more.`);
  }
  return window;
}

const operations = {
  /// Leaves `token` among this profile's own settings, where Pacelet finds which profile it is.
  async hello({ token }) {
    await chrome.storage.local.set({ profile: String(token) });
    return {};
  },

  async list() {
    const windows = await chrome.windows.getAll({ populate: true, windowTypes: ["normal"] });
    return {
      windows: windows
        .filter((window) => !window.incognito)
        .map((window) => ({
          id: window.id,
          focused: window.focused,
          tabs: window.tabs.map((tab) => ({
            id: tab.id,
            active: tab.active,
            title: tab.title || "",
            url: tab.url || tab.pendingUrl || "",
          })),
        })),
    };
  },

  /// Opens `url` behind the other tabs of the window.
  async openTab({ window, url }) {
    await requireWindow(window);
    const tab = await chrome.tabs.create({ windowId: window, url, active: false });
    return { tab: tab.id };
  },

  async openWindow() {
    const window = await chrome.windows.create({});
    return { window: window.id };
  },

  /// A tab that has gone, or has moved to another window, is left alone. A page that asks its user
  /// whether to leave it is not waited for.
  async closeTab({ window, tab }) {
    const there = await chrome.tabs.get(tab).catch(() => null);
    if (there && there.windowId === window && !there.incognito) {
      await Promise.race([chrome.tabs.remove(tab), pause(patience)]);
    }
    return {};
  },

  async closeWindow({ window }) {
    await requireWindow(window);
    await chrome.windows.remove(window);
    return {};
  },

  /// Brings the window forward, with the tab in front if one is named.
  async show({ window, tab }) {
    const holder = await requireWindow(window);
    if (holder.tabs.some((each) => each.id === tab)) {
      await chrome.tabs.update(tab, { active: true });
    }
    await chrome.windows.update(window, { focused: true });
    return {};
  },
};

async function answer(request) {
  const operation = Object.hasOwn(operations, request.ask) ? operations[request.ask] : null;
  if (!operation) {
    throw new Error(`Nobody here knows "${request.ask}".`);
  }
  return operation(request);
}

let port = null;

/// Connects, and again whenever the host goes: at once when it had been there for a while, else
/// after a rest, which the browser's alarm ends.
function connect() {
  const since = Date.now();
  const connection = chrome.runtime.connectNative(host);
  const reply = (message) => {
    if (port === connection) {
      connection.postMessage(message);
    }
  };
  port = connection;

  connection.onMessage.addListener((request) => {
    const id = request.id;
    answer(request)
      .then((result) => reply({ id, ...result }))
      .catch((error) => reply({ id, error: String(error.message || error) }));
  });

  connection.onDisconnect.addListener(async () => {
    // Reading the error tells the browser that it is known.
    void chrome.runtime.lastError;
    port = null;
    if (Date.now() - since > settled) {
      connect();
      return;
    }
    const { wait = firstWait } = await chrome.storage.session.get("wait");
    await chrome.storage.session.set({ wait: Math.min(2 * wait, longestWait) });
    await chrome.alarms.create("connect", { delayInMinutes: wait });
  });
}

function connectOnce() {
  if (port === null) {
    connect();
  }
}

// What starts the worker: it connects as it begins, or when it is still there from before.
chrome.runtime.onStartup.addListener(connectOnce);
chrome.runtime.onInstalled.addListener(connectOnce);
chrome.alarms.onAlarm.addListener(connectOnce);

connectOnce();
