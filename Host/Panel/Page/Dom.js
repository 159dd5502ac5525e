// Small helpers for creating elements.

export const byId = (id) => document.getElementById(id);

/// Creates an element with attributes and children. Attributes that begin with "on" are listeners.
/// Attributes that are false, null or undefined are left out.
export function make(tag, attributes = {}, ...children) {
    const element = document.createElement(tag);
    apply(element, attributes);
    element.append(...children);
    return element;
}

/// Creates an SVG element, with attributes and children as in make().
export function makeSvg(tag, attributes = {}, ...children) {
    const element = document.createElementNS("http://www.w3.org/2000/svg", tag);
    apply(element, attributes);
    element.append(...children);
    return element;
}

function apply(element, attributes) {
    for (const [name, value] of Object.entries(attributes)) {
        if (name.startsWith("on")) {
            element.addEventListener(name.slice(2), value);
        } else if (value !== false && value !== null && value !== undefined) {
            element.setAttribute(name, value === true ? "" : value);
        }
    }
}

export const clamp = (value, least, most) => Math.min(Math.max(value, least), most);

/// Formats a number with at most `decimals` decimals, without trailing zeros.
export const shortNumber = (value, decimals) => String(Number(value.toFixed(decimals)));

let hideTimer = 0;

/// Shows a message at the bottom edge for a while; screen readers announce it.
export function tell(text, isProblem = false) {
    const line = byId("message");
    line.textContent = text;
    line.classList.toggle("problem", isProblem);
    line.classList.add("shown");
    clearTimeout(hideTimer);
    hideTimer = setTimeout(() => line.classList.remove("shown"), isProblem ? 8000 : 3000);
}
