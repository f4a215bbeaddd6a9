package com.korvane.ledger;
public interface Auditable {
}
